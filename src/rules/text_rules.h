#pragma once

#include <span>
#include <string>
#include <string_view>

namespace ks {

class Program;

// How a text field of the main form is put between double quotes when the focus leaves it.
enum class QuoteStyle {
    Value,  // QuoteValue: trailing blanks go, an empty text becomes "", then quotes at both ends
    Inline, // only the quotes at both ends
};

struct QuotedField {
    std::string_view field;
    QuoteStyle style;
};

// The eleven text fields of the main form that are quoted on leaving.
std::span<const QuotedField> quotedFields();

// Normalises the text in place: blanks (only blanks) go from its end; an empty text becomes two double
// quotes; otherwise a double quote is put in front and behind where there is none. Quotes inside stay.
void QuoteValue(std::string& text);
// The same on the program's QuoteBuffer.
void QuoteValue(Program& program);

// Puts a double quote in front and behind where there is none; nothing else. An empty text becomes a single
// double quote.
void QuoteInline(std::string& text);
void QuoteInline(Program& program);

// The Validate handler of a quoted field: its text goes through QuoteBuffer and comes back quoted.
void QuoteField(Program& program, const QuotedField& quoted);

// The Click handler of ipCheck ("Use Default"). On (state 1): IP turns grey and disabled, its text is kept
// in SavedIP and IP is emptied. Off: IP turns white and enabled and gets SavedIP back.
void ipCheck_Click(Program& program);

// Tests a dotted address, after removing blanks from both ends of `IP` (the caller's text changes). True
// for an address that passes. Shorter than 8 characters, or a dot in the last place: the message box "IP
// Validator" with `IP` followed by " is Invalid", and false. An octet that is no number from 0 to 255, or
// other than three dots: false without a message. Empty octets and leading zeros pass.
bool Valid_IP(Program& program, std::string& IP);

// The Validate handler of IP: tests a copy of its text, so the field keeps its blanks; the result is not
// acted on.
void IP_Validate(Program& program);

// Gives the quoted fields and IP their Validate handlers and ipCheck its Click handler.
void ConnectTextRules(Program& program);

} // namespace ks
