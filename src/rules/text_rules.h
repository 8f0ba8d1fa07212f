#pragma once

#include "rules/layer.h"

#include "frame/catalogue.h"
#include "frame/platform.h"

#include <string>

namespace ks {

class Program;

// The text as it is put between double quotes: blanks (only blanks) go from its end; an empty text becomes
// two double quotes; otherwise a double quote is put in front and behind where there is none. Quotes inside
// stay.
std::string quoteValue(std::string text);

// Only a double quote in front and behind where there is none. An empty text becomes a single double quote.
std::string quoteInline(std::string text);

// Whether every double quote of a value is closed again, that is whether it holds an even number of them. The
// server takes an open quote to the end of its line.
bool quotesClosed(std::string_view value);

// The validate handler of a quoted text field: its text comes back quoted, by quoteValue or, for a team
// model, by quoteInline.
void quoteField(Program& program, FieldId field, ValueKind kind);

// The click handler of "Use Default" (ipCheck). On: the IP field turns grey and disabled, its text is kept
// and the field emptied. Off: it turns white and enabled and gets the kept text back.
void useDefaultAddressClicked(Program& program);

// Tests a dotted address after removing blanks from both ends of `address` (the caller's text changes).
// True for an address that passes. Shorter than 8 characters, or a dot in the last place: the message box
// "IP Validator" with the address followed by " is Invalid", and false. An octet that is no number from 0 to
// 255, or other than three dots: false without a message. Empty octets and leading zeros pass.
bool isValidAddress(Program& program, std::string& address);

// The message of the address test: "IP Validator", the trimmed address followed by " is Invalid".
MessageBoxRequest invalidAddressMessage(const std::string& address);

// The validate handler of IP: tests a copy of its text, so the field keeps its blanks; the result is not
// acted on.
void testAddressField(Program& program);

} // namespace ks
