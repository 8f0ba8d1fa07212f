#pragma once

#include <span>
#include <string_view>

namespace ks {

class Field;
class Form;
class Program;

// The form a rule field stands on. A bad value on the main form empties the field; on the weapon
// dialog the text stays.
enum class RuleForm { Main, Weapons };

// What a numeric field accepts: FieldValue of its text from 0 to `highest`, bounds included, whole or not.
// A value outside brings up a message box with OK and no icon.
struct NumericRule {
    RuleForm form;
    std::string_view field;
    double highest;
    std::string_view title;
    std::string_view text;
};

// The forty rules, those of the main form first.
std::span<const NumericRule> numericRules();

// The rule of a field, or nullptr when the field is free.
const NumericRule* findNumericRule(RuleForm form, std::string_view field);

// The form a rule's field stands on.
Form& ruleForm(Program& program, RuleForm form);

// True when the text's leading number lies within the rule's range.
bool NumericRuleAccepts(const NumericRule& rule, std::string_view text);

// The Change handler of a rule field: checks the text, and when it is out of range shows the rule's
// message and, on the main form, empties the field.
void CheckNumericRule(Program& program, const NumericRule& rule, Field& field);

// Gives every rule field its Change handler.
void ConnectNumericRules(Program& program);

} // namespace ks
