#include "config/reader.h"
#include "config/reader_keys.h"
#include "frame/catalogue.h"

#include <gtest/gtest.h>

#include <array>
#include <set>
#include <string>

using namespace ks;

namespace {

struct CutCase {
    std::string record; // without the appended blank
    std::array<std::string, 4> words;
    bool marker = false;
};

RecordWords cut(const std::string& record, std::string& rec) {
    rec = record + ' ';
    return CutRecord(rec);
}

} // namespace

TEST(CutRecord, CutsAtMostFourWordsAndHonoursQuotesSlashesAndTheMarker) {
    const std::string marker(kMarkerLine);
    const std::vector<CutCase> cases = {
        {"set fraglimit 40", {"set", "fraglimit", "40", ""}},
        {"hostname \"Match Server\"", {"hostname", "\"Match Server\"", "", ""}},
        {"// set df_no_falling 8", {"//", "set", "df_no_falling", "8"}},
        {"// set dedicated 1 // Added by KS Launcher - Do NOT modify this section", {"//", "set", "dedicated", "1"}},
        {"// set IP \"1.2.3.4\" // Added", {"//", "set", "IP", "\"1.2.3.4\" // Added"}},
        {"set stdlogname \"kestrand/StdLog.log\" // note", {"set", "stdlogname", "\"kestrand/StdLog.log\" // note", ""}},
        {"set stdlogname kestrand/StdLog.log", {"set", "stdlogname", "", ""}},
        {"set logfile 1 // comment", {"set", "logfile", "1", ""}},
        {"set  fraglimit 30", {"set", "", "fraglimit", "30"}},
        {"set hook", {"set", "hook", "", ""}},
        {"quit", {"", "", "", ""}},
        {"", {"", "", "", ""}},
        {"//------------------DMFLAGS------------", {"", "", "", ""}},
        {"//--------------RUNE BANS--------------", {"//--------------RUNE", "BANS--------------", "", ""}},
        {"set fraglimit 30   ", {"set", "fraglimit", "30", ""}},
        {"set fraglimit\t30", {"set", "fraglimit\t30", "", ""}},
        {"hostname x\"y z\"", {"hostname", "\"y z\"", "", ""}},
        {"map q2dm1 x y", {"map", "q2dm1", "", "y"}},
        {marker, {"//Kestrand", "Launcher", "AUTO", "CONFIG"}, true},
        {marker + " ", {"//Kestrand", "Launcher", "AUTO", "CONFIG"}, false},
        {marker + " x", {"//Kestrand", "Launcher", "AUTO", "CONFIG"}, false},
        {"//kestrand Launcher AUTO CONFIG SECTION - DO NOT Modify", {"//kestrand", "Launcher", "AUTO", "CONFIG"}},
    };
    std::string rec;
    for (const CutCase& c : cases) {
        const RecordWords result = cut(c.record, rec);
        for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(result.words[i], c.words[i]) << c.record << " word " << i + 1;
        EXPECT_EQ(result.marker, c.marker) << c.record;
    }
}

TEST(CutRecord, TheStartMapIsTakenBeforeTrimming) {
    std::string rec;
    EXPECT_EQ(cut("map \"q2dm1\"", rec).startMap, std::optional<std::string_view>("\"q2dm1\" "));
    EXPECT_EQ(cut("map q2dm1", rec).startMap, std::optional<std::string_view>("q2dm1"));
    EXPECT_FALSE(cut("set map q2dm1", rec).startMap);
    EXPECT_FALSE(cut("map", rec).startMap);
}

TEST(CutRecord, VeryLongRecordsEndTheirScan) {
    std::string rec;
    // A slash early on lets the scan go on at position 10,000 in a long record.
    std::string longOne = "set /";
    longOne += std::string(10000 - longOne.size(), 'x') + " value more";
    RecordWords words = cut(longOne, rec);
    EXPECT_EQ(words.words[0], "set");
    EXPECT_EQ(words.words[1].size(), 10000u - 4u);
    EXPECT_EQ(words.words[2], "value");

    // A slash at position 10,000 or later ends it for good.
    for (std::size_t at : {9999u, 10000u, 10001u, 40000u}) {
        const std::string record = std::string(at - 1, 'a') + "/b c d e";
        words = cut(record, rec);
        EXPECT_EQ(words.words[0], at <= 9999 ? std::string(at - 1, 'a') + "/b" : "") << at;
    }

    // Beyond the length a 16-bit position could count, a record cuts like any other.
    const std::string value(40000, 'v');
    words = cut("set motd_time " + value, rec);
    EXPECT_EQ(words.words[2], value);
}

TEST(FlagValue, OnlyNumbersAtOrBelowZeroLeaveTheBoxAlone) {
    for (const char* on : {"1", "8", "0.5", ".5", "5.", "+2", "1E2", "1d2", "2e-3", "&H10", "&h7fff", "&O17", "&H10000",
                           "", "1x", "x", "-", "1E", "\"0\"", "0 ", " 0", "&H", "&HG", "&O8", "1e400", "-1e400",
                           "&H100000000", "1,5"})
        EXPECT_TRUE(FlagValueTurnsOn(on)) << '"' << on << '"';
    for (const char* off : {"0", "-1", "-0.5", "0.0", "+0", "-0", "0E5", "1e-400", "-2D1", "&HFFFF", "&H8000",
                            "&HFFFFFFFF", "&O177777", "&H0"})
        EXPECT_FALSE(FlagValueTurnsOn(off)) << '"' << off << '"';
}

// The reader's key words are its own; they must agree with the tags the writer uses, except for the five
// fields whose written key the reader does not know.
TEST(ReaderKeys, AgreeWithTheCatalogueButForTheFiveKnownFields) {
    const std::set<std::string_view> differing = {"FAD1", "FAD2", "FAD5", "FMS3", "ABT"};
    std::set<std::string_view> seenKeys;
    std::set<std::string_view> found;
    for (const SecondWordKey& row : secondWordKeys()) {
        EXPECT_TRUE(seenKeys.insert(row.key).second) << "twice: " << row.key;
        EXPECT_NE(row.key, kSetKey);
        const auto specs = row.form == FormId::Weapons ? weaponFields() : mainFields();
        const FieldSpec* spec = nullptr;
        for (const FieldSpec& s : specs)
            if (s.name == row.field) spec = &s;
        ASSERT_NE(spec, nullptr) << row.field;
        if (row.form == FormId::Main && differing.count(row.field)) {
            EXPECT_NE(spec->key, row.key) << row.field;
            found.insert(row.field);
        } else {
            EXPECT_EQ(spec->key, row.key) << row.field;
        }
    }
    EXPECT_EQ(found, differing);
    EXPECT_EQ(secondWordKeys().size(), 104u);

    std::set<std::string_view> checks;
    std::size_t flagRows = 0;
    for (const ThirdWordKey& row : thirdWordKeys()) {
        EXPECT_TRUE(seenKeys.insert(row.key).second) << "twice: " << row.key;
        if (row.action != ThirdWordAction::Flag) continue;
        ++flagRows;
        bool matched = false;
        for (const FlagGroup& group : flagGroups())
            for (const FlagMember& member : group.members)
                if (member.check == row.target) matched = member.key == row.key && checks.insert(row.target).second;
        EXPECT_TRUE(matched) << row.key << " " << row.target;
    }
    EXPECT_EQ(flagRows, 85u);
    for (const AmmoField& ammo : startAmmo()) {
        const ThirdWordKey* row = findThirdWordKey(ammo.key);
        ASSERT_NE(row, nullptr) << ammo.key;
        EXPECT_EQ(row->target, ammo.name);
    }
    for (const char* key : {"qdir", "dedicated", "IP"}) EXPECT_NE(findThirdWordKey(key), nullptr) << key;
    EXPECT_EQ(findSecondWordKey("dedicated"), nullptr);
    EXPECT_EQ(findThirdWordKey("fraglimit"), nullptr);
}
