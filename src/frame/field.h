#pragma once

#include "frame/layer.h"

#include "frame/colour.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ks {

// Observers of one control. Views re-read the control when they are told; handlers run after the views.
class Observers {
public:
    using Callback = std::function<void()>;
    using Id = std::size_t;

    Id add(Callback callback);
    void remove(Id id);
    void notify() const;

private:
    std::vector<std::pair<Id, Callback>> callbacks_;
    Id next_ = 1;
};

// A setting on a form: a text with a key (its name in the file), a default, a label and a tool tip.
// Setting a different text notifies the views and then runs the change handlers; the same text runs nothing.
class Field {
public:
    Field(std::string name, std::string key, std::string defaultText, std::string label, std::string toolTip);

    const std::string& name() const { return name_; }
    const std::string& key() const { return key_; }
    const std::string& defaultText() const { return default_; }
    const std::string& label() const { return label_; }
    const std::string& toolTip() const { return toolTip_; }

    const std::string& text() const { return text_; }
    void setText(std::string text);

    bool enabled() const { return enabled_; }
    void setEnabled(bool enabled);
    Colour backColour() const { return back_; }
    void setBackColour(Colour colour);

    // The focus leaves the field: views call this; text set by code never does.
    void validate();

    Observers::Id addView(Observers::Callback view) { return views_.add(std::move(view)); }
    void removeView(Observers::Id id) { views_.remove(id); }
    void onChange(std::function<void()> handler) { change_.push_back(std::move(handler)); }
    void onValidate(std::function<void()> handler) { validate_.push_back(std::move(handler)); }

private:
    std::string name_, key_, default_, label_, toolTip_, text_;
    bool enabled_ = true;
    Colour back_ = kWhite;
    Observers views_;
    std::vector<std::function<void()>> change_, validate_;
};

// A check box with state 0 or 1. A real change of state notifies the views and then runs the click handlers.
class CheckBox {
public:
    CheckBox(std::string name, std::string caption, std::string toolTip, int state = 0);

    const std::string& name() const { return name_; }
    const std::string& caption() const { return caption_; }
    const std::string& toolTip() const { return toolTip_; }

    int state() const { return state_; }
    void setState(int state);

    Observers::Id addView(Observers::Callback view) { return views_.add(std::move(view)); }
    void removeView(Observers::Id id) { views_.remove(id); }
    void onClick(std::function<void()> handler) { click_.push_back(std::move(handler)); }

private:
    std::string name_, caption_, toolTip_;
    int state_ = 0;
    Observers views_;
    std::vector<std::function<void()>> click_;
};

// A tab control: the index of the tab that is up. A real change notifies views, then runs the handlers.
class TabControl {
public:
    TabControl(std::string name, std::vector<std::string> captions, int current);

    const std::string& name() const { return name_; }
    const std::vector<std::string>& captions() const { return captions_; }
    int current() const { return current_; }
    void setCurrent(int index);

    Observers::Id addView(Observers::Callback view) { return views_.add(std::move(view)); }
    void removeView(Observers::Id id) { views_.remove(id); }
    void onChange(std::function<void()> handler) { change_.push_back(std::move(handler)); }

private:
    std::string name_;
    std::vector<std::string> captions_;
    int current_ = 0;
    Observers views_;
    std::vector<std::function<void()>> change_;
};

// One of the two selectors of the main window, the drive list and the directory tree: the text it shows.
// Showing a text tells the views; choosing one also runs the choice handlers. The selection routines decide
// which of the two a move is.
class Selector {
public:
    Selector(std::string name, std::string toolTip) : name_(std::move(name)), toolTip_(std::move(toolTip)) {}

    const std::string& name() const { return name_; }
    const std::string& toolTip() const { return toolTip_; }
    const std::string& text() const { return text_; }

    // Both give whether the text changed; the same text runs nothing.
    bool show(const std::string& text);
    bool choose(const std::string& text);

    Observers::Id addView(Observers::Callback view) { return views_.add(std::move(view)); }
    void removeView(Observers::Id id) { views_.remove(id); }
    void onChoice(std::function<void()> handler) { choice_.push_back(std::move(handler)); }

private:
    std::string name_, toolTip_, text_;
    Observers views_;
    std::vector<std::function<void()>> choice_;
};

// One form: its fields and check boxes in the order of the catalogue, and its tab control. Code reaches them
// by their index; a name that comes from outside (a window's control, a test) is looked up by name.
class Form {
public:
    explicit Form(std::string name) : name_(std::move(name)) {}
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    const std::string& name() const { return name_; }

    Field& addField(std::string name, std::string key, std::string defaultText, std::string label, std::string toolTip);
    CheckBox& addCheckBox(std::string name, std::string caption, std::string toolTip, int state = 0);
    TabControl& addTabs(std::string name, std::vector<std::string> captions, int current);

    Field& field(std::size_t index) const { return *fields_[index]; }
    CheckBox& check(std::size_t index) const { return *checks_[index]; }
    TabControl& tabs() const { return *tabs_; }

    // Null when the form has no control of that name. Names are unique per form only.
    Field* findField(std::string_view name) const;
    CheckBox* findCheck(std::string_view name) const;

    const std::vector<std::unique_ptr<Field>>& fields() const { return fields_; }
    const std::vector<std::unique_ptr<CheckBox>>& checkBoxes() const { return checks_; }

private:
    std::string name_;
    std::vector<std::unique_ptr<Field>> fields_;
    std::vector<std::unique_ptr<CheckBox>> checks_;
    std::unordered_map<std::string_view, Field*> fieldIndex_;
    std::unordered_map<std::string_view, CheckBox*> checkIndex_;
    std::unique_ptr<TabControl> tabs_;
};

} // namespace ks
