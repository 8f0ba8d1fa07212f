#pragma once

#include "forms/layer.h"

// The surface of the round splash screen: its size and the place of every picture and caption on it. The
// launcher lays out the screen from it, and the tool that draws the screen's pictures when the program is built
// (tools/splash) draws each picture and caption to the size and place given here. Lengths are twips, fifteen
// to the pixel. Nothing here needs Qt.

#include <cstdint>
#include <string_view>

namespace ks::splash {

constexpr int kClientWidth = 8520;
constexpr int kClientHeight = 6420;
constexpr int kTwipsPerPixel = 15;

// Twips to whole pixels, a half rounded away from zero.
constexpr int pixels(int twips) {
    return twips >= 0 ? (twips + kTwipsPerPixel / 2) / kTwipsPerPixel
                      : -((-twips + kTwipsPerPixel / 2) / kTwipsPerPixel);
}

constexpr int kWidthPixels = pixels(kClientWidth);
constexpr int kHeightPixels = pixels(kClientHeight);

// A picture stands at its place in twips and has a size of its own in pixels.
struct PicturePlace {
    std::string_view name;
    int left;
    int top;
    int width;
    int height;
};

// The large picture first, then the three banners that take turns in one place: each lies on those before it.
inline constexpr PicturePlace kPictures[] = {
    {"Image4", 960, -840, 450, 450}, // stars, an ember glow and the shield, behind everything
    {"Image1", 960, 4320, 468, 60},  // a rail slug's blue trail
    {"Image2", 960, 4320, 468, 60},  // a rocket and its smoke
    {"Image3", 1080, 4320, 468, 60}, // the mod's name stamped into steel
};

// The faces of the captions, by what they are for.
enum class Face {
    Title,      // 24 point, bold, rounded
    Form,       // the form's own face, 8.25 point
    Credit,     // 13.5 point, bold, italic, underlined
    CreditName, // 15.75 point, bold, italic
};

struct Caption {
    std::string_view name;
    std::string_view text; // empty for the version, which comes from the build
    std::uint32_t rgb;     // 0xRRGGBB
    int left;
    int top;
    int width;
    int height;
    Face face;
    bool centred; // in both directions; else from the top left corner
};

inline constexpr std::string_view kTitle = "]{estrand Server Launcher";
inline constexpr std::uint32_t kBlue = 0x0000FF;

// Over the pictures, each lying on those before it: the grey shadow under the blue title.
inline constexpr Caption kCaptions[] = {
    {"Label6", kTitle, 0x808080, 640, 750, 6132, 1332, Face::Title, true},
    {"Label5", kTitle, kBlue, 600, 720, 6132, 1332, Face::Title, true},
    {"Label7", "Version", 0xC0C0C0, 5040, 1800, 732, 372, Face::Form, false},
    {"VERS", "", 0xC0C0C0, 5760, 1800, 732, 252, Face::Form, false},
    {"Label1", "Designed and Programmed by:", 0xE0E0E0, 1560, 2400, 4572, 492, Face::Credit, false},
    {"Label2", "Orvalt", kBlue, 1560, 3120, 1332, 492, Face::CreditName, false},
    {"Label4", " and ", kBlue, 3360, 3480, 972, 492, Face::CreditName, false},
    {"Label3", "Tamsinder", kBlue, 4440, 3720, 1812, 492, Face::CreditName, false},
};

} // namespace ks::splash
