#include "frame/field.h"

#include <algorithm>

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

Field::Field(std::string name, std::string key, std::string defaultText, std::string label, std::string toolTip)
    : name_(std::move(name)), key_(std::move(key)), default_(std::move(defaultText)), label_(std::move(label)),
      toolTip_(std::move(toolTip)), text_(default_) {}

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

CheckBox::CheckBox(std::string name, std::string caption, std::string toolTip, int state)
    : name_(std::move(name)), caption_(std::move(caption)), toolTip_(std::move(toolTip)), state_(state) {}

void CheckBox::setState(int state) {
    if (state == state_) return;
    state_ = state;
    views_.notify();
    runAll(click_);
}

TabControl::TabControl(std::string name, std::vector<std::string> captions, int current)
    : name_(std::move(name)), captions_(std::move(captions)), current_(current) {}

void TabControl::setCurrent(int index) {
    if (index == current_ || index < 0 || index >= static_cast<int>(captions_.size())) return;
    current_ = index;
    views_.notify();
    runAll(change_);
}

bool Selector::show(const std::string& text) {
    if (text == text_) return false;
    text_ = text;
    views_.notify();
    return true;
}

bool Selector::choose(const std::string& text) {
    if (!show(text)) return false;
    runAll(choice_);
    return true;
}

Field& Form::addField(std::string name, std::string key, std::string defaultText, std::string label,
                      std::string toolTip) {
    fields_.push_back(std::make_unique<Field>(std::move(name), std::move(key), std::move(defaultText), std::move(label),
                                              std::move(toolTip)));
    Field& field = *fields_.back();
    fieldIndex_.emplace(field.name(), &field);
    return field;
}

CheckBox& Form::addCheckBox(std::string name, std::string caption, std::string toolTip, int state) {
    checks_.push_back(std::make_unique<CheckBox>(std::move(name), std::move(caption), std::move(toolTip), state));
    CheckBox& box = *checks_.back();
    checkIndex_.emplace(box.name(), &box);
    return box;
}

TabControl& Form::addTabs(std::string name, std::vector<std::string> captions, int current) {
    tabs_ = std::make_unique<TabControl>(std::move(name), std::move(captions), current);
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

} // namespace ks
