#include "rules/numeric_rules.h"

#include "frame/program.h"
#include "rules/field_value.h"

namespace ks {

namespace {

constexpr std::string_view kZeroOrOne = "Must be 0 or 1";

constexpr NumericRule kRules[] = {
    {RuleForm::Main, "ABT", 1, "Anti-Bot Talk, Off or On", kZeroOrOne},
    {RuleForm::Main, "FAD1", 1, "Allow Downloads, Off or On", kZeroOrOne},
    {RuleForm::Main, "FAD2", 1, "Allow Map Downloads, Off or On", kZeroOrOne},
    {RuleForm::Main, "FAD3", 1, "Allow Download of Models, Off or On", kZeroOrOne},
    {RuleForm::Main, "FAD4", 1, "Allow Download of Players, Off or On", kZeroOrOne},
    {RuleForm::Main, "FAD5", 1, "Allow Download of Sounds, Off or On", kZeroOrOne},
    {RuleForm::Main, "FAF", 1, "Allow use of Flashlights, Off or On", kZeroOrOne},
    {RuleForm::Main, "FAM", 1, "Allow, Admin Menus for Remote Operators, Off or On", kZeroOrOne},
    {RuleForm::Main, "FAV", 1, "Allow users to vote, Off or On", kZeroOrOne},
    {RuleForm::Main, "FBP1", 1, "Killed players Leave BackPacks, Off or On", kZeroOrOne},
    {RuleForm::Main, "FCC1", 1, "Check for Campers, Off or On", kZeroOrOne},
    {RuleForm::Main, "FCC5", 1, "Use Map Rotation in TXT file, Off or On", kZeroOrOne},
    {RuleForm::Main, "FCTF", 1, "CTF off or on", kZeroOrOne},
    {RuleForm::Main, "FDM", 1, "DeathMatch, Off or On", kZeroOrOne},
    {RuleForm::Main, "FDS", 1, "Dedicated, Off or On", kZeroOrOne},
    {RuleForm::Main, "FGR", 1, "Online Gamers League(OGL), Off or On", kZeroOrOne},
    {RuleForm::Main, "FH1", 1, "Laser Grapple, Off or On", kZeroOrOne},
    {RuleForm::Main, "FHS1", 1, "Show High Scores, Off or On", kZeroOrOne},
    {RuleForm::Main, "FLHB", 1, "Use Laser Hyperblaster, Off or On", kZeroOrOne},
    {RuleForm::Main, "FLO1", 1, "Allow Lights Out, Off or On", kZeroOrOne},
    {RuleForm::Main, "FLOGF", 1, "Make Frag Stats Log, Off or On", kZeroOrOne},
    {RuleForm::Main, "FLOGS", 1, "Frag Stats Standard Type Log, Off or On", kZeroOrOne},
    {RuleForm::Main, "FMM", 1, "Match Play, Off or On", kZeroOrOne},
    {RuleForm::Main, "FMR", 1, "Map Random Rotation for TXT file, Off or On", kZeroOrOne},
    {RuleForm::Main, "FOE", 1, "Allow Random EarthQuakes, Off or On", kZeroOrOne},
    {RuleForm::Main, "FP1", 1, "Allow Users to Protect Names, Off or On", kZeroOrOne},
    {RuleForm::Main, "FPF1", 1, "Use Text Filter, Off or On", kZeroOrOne},
    {RuleForm::Main, "FPS", 1, "Play Song at Connect, Off or On", kZeroOrOne},
    {RuleForm::Main, "FPUBLIC", 1, "Public, Off or On", kZeroOrOne},
    {RuleForm::Main, "FQWS", 1, "Quick Weapons Switching, Off or On", kZeroOrOne},
    {RuleForm::Main, "FR", 1, "Runes, Off or On", kZeroOrOne},
    {RuleForm::Main, "FRH1", 1, "Reset Hook on player contact, Off or On", kZeroOrOne},
    {RuleForm::Main, "FSH", 1, "Grapple the Sky, Off or On", kZeroOrOne},
    {RuleForm::Main, "FSI", 1, "Save Disconnected Players Info, Off or On", kZeroOrOne},
    {RuleForm::Main, "FTEAMS", 1, "Team Play, Off or On", kZeroOrOne},
    // The hook colour's title says 1 to 8, yet 0 passes.
    {RuleForm::Main, "FHC1", 8, "Laser Grapple ColorAllow, 1 - 8", "Must be 0 - 8"},
    // Voosh mode shows its short text as the title and the long one as the body.
    {RuleForm::Main, "VM", 9, "Must be 0 - 9",
     "One Weapon Voosh-Mode 0 - Off, check other possible values by the text"},
    {RuleForm::Weapons, "DL1", 1, "Damage Location, Off or On", kZeroOrOne},
    {RuleForm::Weapons, "FDD1", 1, "Display Damage Location, Off or On", kZeroOrOne},
    {RuleForm::Weapons, "FPEX", 1, "Particle Explosions, Off or On", kZeroOrOne},
};

} // namespace

std::span<const NumericRule> numericRules() { return kRules; }

const NumericRule* findNumericRule(RuleForm form, std::string_view field) {
    for (const NumericRule& rule : kRules)
        if (rule.form == form && rule.field == field) return &rule;
    return nullptr;
}

Form& ruleForm(Program& program, RuleForm form) { return form == RuleForm::Main ? program.frmMain : program.Form2; }

bool NumericRuleAccepts(const NumericRule& rule, std::string_view text) {
    const double value = FieldValue(text);
    return value >= 0 && value <= rule.highest;
}

void CheckNumericRule(Program& program, const NumericRule& rule, Field& field) {
    if (NumericRuleAccepts(rule, field.text())) return;
    program.platform.messageBox(
        {std::string(rule.text), std::string(rule.title), MessageButtons::Ok, MessageIcon::None, 0});
    // Emptying runs the rule once more; the empty text reads as 0 and passes quietly.
    if (rule.form == RuleForm::Main) field.setText("");
}

void ConnectNumericRules(Program& program) {
    for (const NumericRule& rule : kRules) {
        Field& field = ruleForm(program, rule.form).field(rule.field);
        field.onChange([&program, &rule, &field] { CheckNumericRule(program, rule, field); });
    }
}

} // namespace ks
