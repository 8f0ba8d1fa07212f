#include "frame/field.h"

#include <algorithm>
#include <stdexcept>

namespace ks {

Observers::Id Observers::add(Callback callback) {
    const Id id = next_++;
    callbacks_.emplace_back(id, std::move(callback));
    return id;
}

void Observers::remove(Id id) {
    std::erase_if(callbacks_, [id](const auto& entry) { return entry.first == id; });
}

void Observers::notify() const {
    // By index: a view may add or remove views while it is told.
    for (std::size_t i = 0; i < callbacks_.size(); ++i) {
        auto callback = callbacks_[i].second;
        callback();
    }
}

namespace {
void runAll(const std::vector<std::function<void()>>& handlers) {
    for (std::size_t i = 0; i < handlers.size(); ++i)
        handlers[i]();
}
} // namespace

Field::Field(std::string form, std::string name, std::string tag, std::string defaultText, std::string label,
             std::string toolTip)
    : form_(std::move(form)), name_(std::move(name)), tag_(std::move(tag)), default_(std::move(defaultText)),
      label_(std::move(label)), toolTip_(std::move(toolTip)), text_(default_) {}

void Field::setText(std::string text) {
    if (text == text_) return;
    text_ = std::move(text);
    views_.notify();
    runAll(change_);
}

void Field::setEnabled(bool enabled) {
    if (enabled == enabled_) return;
    enabled_ = enabled;
    views_.notify();
}

void Field::setBackColour(Colour colour) {
    if (colour == back_) return;
    back_ = colour;
    views_.notify();
}

void Field::validate() { runAll(validate_); }

CheckBox::CheckBox(std::string form, std::string name, std::string caption, std::string toolTip, int state)
    : form_(std::move(form)), name_(std::move(name)), caption_(std::move(caption)), toolTip_(std::move(toolTip)),
      state_(state) {}

void CheckBox::setState(int state) {
    if (state == state_) return;
    state_ = state;
    views_.notify();
    runAll(click_);
}

TabControl::TabControl(std::string form, std::string name, std::vector<std::string> captions, int current)
    : form_(std::move(form)), name_(std::move(name)), captions_(std::move(captions)), current_(current) {}

void TabControl::setCurrent(int index) {
    if (index == current_ || index < 0 || index >= static_cast<int>(captions_.size())) return;
    current_ = index;
    views_.notify();
    runAll(change_);
}

Field& Form::addField(std::string name, std::string tag, std::string defaultText, std::string label,
                      std::string toolTip) {
    fields_.push_back(std::make_unique<Field>(name_, std::move(name), std::move(tag), std::move(defaultText),
                                              std::move(label), std::move(toolTip)));
    Field& field = *fields_.back();
    fieldIndex_.emplace(field.name(), &field);
    return field;
}

CheckBox& Form::addCheckBox(std::string name, std::string caption, std::string toolTip, int state) {
    checks_.push_back(
        std::make_unique<CheckBox>(name_, std::move(name), std::move(caption), std::move(toolTip), state));
    CheckBox& box = *checks_.back();
    checkIndex_.emplace(box.name(), &box);
    return box;
}

TabControl& Form::addTabs(std::string name, std::vector<std::string> captions, int current) {
    tabs_ = std::make_unique<TabControl>(name_, std::move(name), std::move(captions), current);
    return *tabs_;
}

Field* Form::findField(std::string_view name) const {
    const auto it = fieldIndex_.find(name);
    return it == fieldIndex_.end() ? nullptr : it->second;
}

CheckBox* Form::findCheck(std::string_view name) const {
    const auto it = checkIndex_.find(name);
    return it == checkIndex_.end() ? nullptr : it->second;
}

Field& Form::field(std::string_view name) const {
    if (Field* found = findField(name)) return *found;
    throw std::out_of_range(name_ + " has no field " + std::string(name));
}

CheckBox& Form::check(std::string_view name) const {
    if (CheckBox* found = findCheck(name)) return *found;
    throw std::out_of_range(name_ + " has no check box " + std::string(name));
}

TabControl& Form::tabs() const {
    if (!tabs_) throw std::out_of_range(name_ + " has no tab control");
    return *tabs_;
}

} // namespace ks
