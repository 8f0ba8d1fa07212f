#include "session/settings_by_key.h"

#include "frame/program.h"
#include "rules/numbers.h"
#include "rules/text_rules.h"

namespace ks {

namespace {

AssignResult refused(std::string title, std::string text) {
    return {AssignOutcome::Refused, std::move(title), std::move(text)};
}

AssignResult totalNotSettable(const SettingKey& total) {
    const auto members = flagGroups()[total.group].members;
    return {AssignOutcome::NotSettable, std::string(total.key),
            std::string(total.key) + " adds up its flags (" + std::string(members.front().key) + " ... " +
                std::string(members.back().key) + ") and follows them: set a flag to 1 or 0 instead, as in " +
                std::string(members.front().key) + "=1"};
}

AssignResult assignAddress(Program& program, std::string_view value) {
    CheckBox& useDefault = program.check(id::ipCheck);
    if (value.empty()) {
        useDefault.setState(1);
        return {};
    }
    useDefault.setState(0);
    Field& field = program.field(id::IP);
    field.setText(std::string(value));
    // The address test is what leaving the field runs; it is called here for its verdict.
    std::string address = field.text();
    if (!isValidAddress(program, address)) {
        const MessageBoxRequest message = invalidAddressMessage(address);
        return refused(message.title, message.text);
    }
    return {};
}

AssignResult assignText(Program& program, const SettingKey& setting, std::string_view value) {
    Field& field = program.field(setting.field);
    program.takeRefusal();
    field.setText(std::string(value));
    // A range rule that refuses the value says so as it runs; emptying the field runs it once more, quietly.
    const std::optional<MessageBoxRequest> refusal = program.takeRefusal();
    field.validate();
    if (refusal) return refused(refusal->title, refusal->text);
    // The server reads these as numbers, where a word or a sign would turn into 0 or into another number.
    if (setting.kind == SettingKind::Number && !isPlainNumber(value))
        return refused(std::string(setting.key), std::string(kMustBeANumber));
    if (!quotesClosed(field.text()))
        return refused(std::string(setting.key), "a double quote in the value is never closed");
    return {};
}

} // namespace

AssignResult assignSetting(Program& program, const SettingKey& setting, std::string_view value) {
    if (value.find_first_of("\r\n") != std::string_view::npos)
        return refused(std::string(setting.key), "a value cannot hold a line break");
    switch (setting.kind) {
    case SettingKind::Total:
        return totalNotSettable(setting);
    case SettingKind::Flag:
        if (value != "0" && value != "1") return refused(std::string(setting.key), "takes 1 (on) or 0 (off)");
        program.check(setting.check).setState(value == "1" ? 1 : 0);
        return {};
    case SettingKind::Address:
        return assignAddress(program, value);
    case SettingKind::Text:
    case SettingKind::Number:
        break;
    }
    return assignText(program, setting, value);
}

} // namespace ks
