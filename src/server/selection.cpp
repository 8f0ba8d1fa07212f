#include "server/selection.h"

#include "frame/program.h"
#include "frame/selectors.h"
#include "server/paths.h"

namespace ks {

void Drive2_Change(Program& program) {
    SelectDirectory(program, program.platform.driveCurrentDirectory(program.Drive2.text()));
}

void Dir2_Change(Program& program) {
    if (program.state.ReadingQDIR == 1) return;
    Field& qdir = program.frmMain.field("QDIR");
    Field& gameDir = program.frmMain.field("FGD");
    const std::string path = program.Dir2.text();
    qdir.setText(path);
    gameDir.setText(path);
    GameDirectorySplit split = SplitGameDirectory(program.pathStyle, path);
    gameDir.setText(std::move(split.gameDir));
    qdir.setText(std::move(split.qdir));
}

namespace {
void whiteWhenSet(Field& field) {
    if (!IsUnset(field.text())) field.setBackColour(kWhite);
}
} // namespace

void FGD_Change(Program& program) { whiteWhenSet(program.frmMain.field("FGD")); }
void QDIR_Change(Program& program) { whiteWhenSet(program.frmMain.field("QDIR")); }
void FFile_Change(Program& program) {
    Field& file = program.frmMain.field("FFile");
    if (file.text() != kUnset) file.setBackColour(kWhite);
}

void ConnectServer(Program& program) {
    program.Drive2.onChange([&program] { Drive2_Change(program); });
    program.Dir2.onChange([&program] { Dir2_Change(program); });
    program.frmMain.field("FGD").onChange([&program] { FGD_Change(program); });
    program.frmMain.field("QDIR").onChange([&program] { QDIR_Change(program); });
    program.frmMain.field("FFile").onChange([&program] { FFile_Change(program); });
}

std::vector<SearchPlace> KestrandSearchPlaces(PathStyle style, const std::string& home) {
    if (style == PathStyle::Windows) {
        return {{"c:\\quake2\\kestrand\\", "C:", "C:\\QUAKE2\\KESTRAND"},
                {"d:\\quake2\\kestrand\\", "d:", "d:\\QUAKE2\\KESTRAND"},
                {"e:\\quake2\\kestrand\\", "e:", "e:\\QUAKE2\\KESTRAND"},
                {"f:\\quake2\\kestrand\\", "f:", "f:\\QUAKE2\\KESTRAND"}};
    }
    std::vector<SearchPlace> places;
    for (const char* path :
         {"/usr/local/games/quake2/kestrand", "/usr/share/games/quake2/kestrand", "/opt/quake2/kestrand"})
        places.push_back({std::string(path) + "/", "/", path});
    if (!home.empty()) {
        std::string base = home;
        while (base.size() > 1 && base.back() == '/')
            base.pop_back();
        if (base == "/") base.clear();
        places.push_back({base + "/.yq2/kestrand/", "/", base + "/.yq2/kestrand"});
    }
    return places;
}

std::string RootDrive(PathStyle style) { return style == PathStyle::Windows ? "C:" : "/"; }

void FindKestrandDirectory(Program& program) {
    Platform& platform = program.platform;
    const std::string root = RootDrive(program.pathStyle);
    SelectDrive(program, root);

    // Every place is tested, also after one was found.
    const std::vector<SearchPlace> places = KestrandSearchPlaces(program.pathStyle, platform.homeDirectory());
    const SearchPlace* found = nullptr;
    for (const SearchPlace& place : places) {
        const bool here = platform.hasPlainFile(place.tested);
        if (&place == &places.front()) program.state.FileExists = here ? -1 : 0;
        if (here && !found) found = &place;
    }

    if (found) {
        SelectDrive(program, found->drive);
        SelectDirectory(program, found->directory);
        return;
    }
    platform.messageBox({"You do not have a Kestrand directory,\rinsure you point the right Kestrand directory",
                         "No Kestrand Directory", MessageButtons::Ok, MessageIcon::None, 0});
    SelectDrive(program, root);
    SelectDirectory(program, program.pathStyle == PathStyle::Windows ? platform.driveCurrentDirectory(root) : root);
}

} // namespace ks
