#include "rules/text_rules.h"

#include "frame/colour.h"
#include "frame/program.h"

namespace ks {

namespace {

constexpr char kQuote = '"';

constexpr QuotedField kQuotedRows[] = {
    {"FHOSTN", QuoteStyle::Value}, {"FLOGN", QuoteStyle::Value}, {"FPIS", QuoteStyle::Value},
    {"FRCON2", QuoteStyle::Value}, {"FTL", QuoteStyle::Value},   {"FTN1", QuoteStyle::Value},
    {"FTN2", QuoteStyle::Value},   {"FTS1", QuoteStyle::Value},  {"FTS2", QuoteStyle::Value},
    {"FTM1", QuoteStyle::Inline},  {"FTM2", QuoteStyle::Inline},
};

void showInvalid(Program& program, const std::string& IP) {
    program.platform.messageBox({IP + " is Invalid", "IP Validator", MessageButtons::Ok, MessageIcon::None, 0});
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

std::span<const QuotedField> quotedFields() { return kQuotedRows; }

void QuoteInline(std::string& text) {
    if (text.empty() || text.front() != kQuote) text.insert(text.begin(), kQuote);
    if (text.back() != kQuote) text.push_back(kQuote);
}

void QuoteValue(std::string& text) {
    const std::size_t last = text.find_last_not_of(' ');
    text.erase(last == std::string::npos ? 0 : last + 1);
    if (text.empty()) {
        text.assign(2, kQuote);
        return;
    }
    QuoteInline(text);
}

void QuoteValue(Program& program) { QuoteValue(program.state.QuoteBuffer); }
void QuoteInline(Program& program) { QuoteInline(program.state.QuoteBuffer); }

void QuoteField(Program& program, const QuotedField& quoted) {
    Field& field = program.frmMain.field(quoted.field);
    program.state.QuoteBuffer = field.text();
    if (quoted.style == QuoteStyle::Value)
        QuoteValue(program);
    else
        QuoteInline(program);
    field.setText(program.state.QuoteBuffer);
}

void ipCheck_Click(Program& program) {
    Field& IP = program.frmMain.field("IP");
    if (program.frmMain.check("ipCheck").state() == 1) {
        IP.setBackColour(kDisabledGrey);
        IP.setEnabled(false);
        program.state.SavedIP = IP.text();
        IP.setText("");
    } else {
        IP.setBackColour(kWhite);
        IP.setEnabled(true);
        IP.setText(program.state.SavedIP);
    }
}

bool Valid_IP(Program& program, std::string& IP) {
    const std::size_t first = IP.find_first_not_of(' ');
    if (first == std::string::npos)
        IP.clear();
    else
        IP = IP.substr(first, IP.find_last_not_of(' ') - first + 1);

    if (IP.size() < 8) {
        showInvalid(program, IP);
        return false;
    }
    int dots = 0;
    std::string octet;
    for (std::size_t i = 0; i < IP.size(); ++i) {
        if (IP[i] == '.') {
            ++dots;
            octet.clear();
            if (i == IP.size() - 1) {
                showInvalid(program, IP);
                return false;
            }
        } else {
            // The octet so far is converted at every character, so the first bad character ends the test.
            octet += IP[i];
            if (!octetConverts(octet)) return false;
        }
    }
    return dots == 3;
}

void IP_Validate(Program& program) {
    std::string address = program.frmMain.field("IP").text();
    Valid_IP(program, address);
}

void ConnectTextRules(Program& program) {
    for (const QuotedField& quoted : kQuotedRows)
        program.frmMain.field(quoted.field).onValidate([&program, &quoted] { QuoteField(program, quoted); });
    program.frmMain.field("IP").onValidate([&program] { IP_Validate(program); });
    program.frmMain.check("ipCheck").onClick([&program] { ipCheck_Click(program); });
}

} // namespace ks
