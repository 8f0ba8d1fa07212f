#include "server/selection.h"

#include "frame/program.h"
#include "frame/selectors.h"
#include "server/paths.h"

namespace ks {

void splitChosenDirectory(Program& program) {
    Field& qdir = program.field(id::QDIR);
    Field& gameDir = program.field(id::FGD);
    const std::string path = program.directorySelector().text();
    // Both fields pass through the whole path first, so each change handler sees a set value.
    qdir.setText(path);
    gameDir.setText(path);
    GameDirectorySplit split = splitGameDirectory(program.pathStyle(), path);
    gameDir.setText(std::move(split.gameDir));
    qdir.setText(std::move(split.qdir));
}

void whitenWhenSet(Program& program, FieldId id) {
    Field& field = program.field(id);
    const bool set = id == id::FFile ? field.text() != kUnset : !isUnset(field.text());
    if (set) field.setBackColour(kWhite);
}

std::vector<SearchPlace> kestrandSearchPlaces(PathStyle style, const std::string& home) {
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

std::string rootDrive(PathStyle style) { return style == PathStyle::Windows ? "C:" : "/"; }

void findKestrandDirectory(Program& program) {
    Platform& platform = program.platform();
    const std::string root = rootDrive(program.pathStyle());
    selectDrive(program, root);

    // Every place is tested, also after one was found.
    const std::vector<SearchPlace> places = kestrandSearchPlaces(program.pathStyle(), platform.homeDirectory());
    const SearchPlace* found = nullptr;
    for (const SearchPlace& place : places)
        if (platform.hasPlainFile(place.tested) && !found) found = &place;

    if (found) {
        selectDrive(program, found->drive);
        selectDirectory(program, found->directory);
        return;
    }
    platform.messageBox({"You do not have a Kestrand directory,\rinsure you point the right Kestrand directory",
                         "No Kestrand Directory", MessageButtons::Ok, MessageIcon::None, 0});
    selectDrive(program, root);
    selectDirectory(program, program.pathStyle() == PathStyle::Windows ? platform.driveCurrentDirectory(root) : root);
}

} // namespace ks
