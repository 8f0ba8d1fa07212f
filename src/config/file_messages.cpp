#include "config/file_messages.h"

namespace ks {

namespace {
MessageBoxRequest fileWarning(std::string text) {
    return {std::move(text), std::string(kFileWarningTitle), MessageButtons::Ok, MessageIcon::Critical, 0};
}
} // namespace

MessageBoxRequest noSuchFileMessage() { return fileWarning("There is no such existing file!"); }

MessageBoxRequest foreignFileMessage() {
    // Five pieces, each joined to the next by one carriage return.
    return fileWarning("This Configuration file was not created\r"
                       "with the Kestrand Launcher.  The Program\r"
                       "will convert this file to the Kestrand Launcher\r"
                       "file format.  You must got to Weapons / DM Flags\r"
                       "button and set your item preferences on each tab");
}

MessageBoxRequest criticalSettingsMissingMessage() {
    return fileWarning("One of the critical settings has not been set,\rsee the yellow highlighted fields");
}

MessageBoxRequest replaceFileQuestion() {
    return {"Replace File ?", "Configuration File Exists Warning", MessageButtons::YesNo, MessageIcon::Critical, 0};
}

MessageBoxRequest unsavedWorkQuestion() {
    return {"You have not saved your work yet, would you like to save ?", "Exit without Save Warning ?",
            MessageButtons::YesNo, MessageIcon::Critical, 1};
}

MessageBoxRequest writeFailedMessage(const std::string& path, const std::string& reason) {
    return fileWarning("The configuration file " + path + " could not be written:\r" + reason +
                       "\rThe file on disk is unchanged.");
}

} // namespace ks
