#include "rules/text_rules.h"

#include "frame/colour.h"
#include "frame/program.h"

namespace ks {

namespace {

constexpr char kQuote = '"';

void showInvalid(Program& program, const std::string& address) {
    program.platform().messageBox(invalidAddressMessage(address));
}

// An octet converts when it is a whole number from 0 to 255 written in digits alone; any number of leading
// zeros is allowed.
bool octetConverts(std::string_view octet) {
    int value = 0;
    for (const char c : octet) {
        if (c < '0' || c > '9') return false;
        value = value * 10 + (c - '0');
        if (value > 255) return false;
    }
    return !octet.empty();
}

} // namespace

MessageBoxRequest invalidAddressMessage(const std::string& address) {
    return {address + " is Invalid", "IP Validator", MessageButtons::Ok, MessageIcon::None, 0};
}

std::string quoteInline(std::string text) {
    if (text.empty() || text.front() != kQuote) text.insert(text.begin(), kQuote);
    if (text.back() != kQuote) text.push_back(kQuote);
    return text;
}

bool quotesClosed(std::string_view value) {
    std::size_t quotes = 0;
    for (const char c : value)
        quotes += c == kQuote ? 1 : 0;
    return quotes % 2 == 0;
}

std::string quoteValue(std::string text) {
    const std::size_t last = text.find_last_not_of(' ');
    text.erase(last == std::string::npos ? 0 : last + 1);
    if (text.empty()) return std::string(2, kQuote);
    return quoteInline(std::move(text));
}

void quoteField(Program& program, FieldId id, ValueKind kind) {
    Field& field = program.field(id);
    field.setText(kind == ValueKind::QuotedModel ? quoteInline(field.text()) : quoteValue(field.text()));
}

void useDefaultAddressClicked(Program& program) {
    Field& address = program.field(id::IP);
    if (program.check(id::ipCheck).state() == 1) {
        address.setBackColour(kDisabledGrey);
        address.setEnabled(false);
        program.keepAddress(address.text());
        address.setText("");
    } else {
        address.setBackColour(kWhite);
        address.setEnabled(true);
        address.setText(program.savedAddress());
    }
}

bool isValidAddress(Program& program, std::string& address) {
    const std::size_t first = address.find_first_not_of(' ');
    if (first == std::string::npos)
        address.clear();
    else
        address = address.substr(first, address.find_last_not_of(' ') - first + 1);

    if (address.size() < 8) {
        showInvalid(program, address);
        return false;
    }
    int dots = 0;
    std::string octet;
    for (std::size_t i = 0; i < address.size(); ++i) {
        if (address[i] == '.') {
            ++dots;
            octet.clear();
            if (i == address.size() - 1) {
                showInvalid(program, address);
                return false;
            }
        } else {
            // The octet so far is converted at every character, so the first bad character ends the test.
            octet += address[i];
            if (!octetConverts(octet)) return false;
        }
    }
    return dots == 3;
}

void testAddressField(Program& program) {
    std::string address = program.field(id::IP).text();
    isValidAddress(program, address);
}

} // namespace ks
