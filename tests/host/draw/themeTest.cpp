#include "draw/zelTheme.h"

#include <gtest/gtest.h>

#include <set>

using zelDraw::Colour;
using zelDraw::contrast;

TEST(Theme, EveryTypeIsSeenOnEveryGround)
{
    EXPECT_NEAR(21, contrast(0x000000, 0xffffff), 0.01);
    EXPECT_NEAR(1, contrast(0x5d6877, 0x5d6877), 0.01);
    std::vector<std::string> types = zelDraw::colouredTypes();
    for (int i = 0; i < 500; ++i) // And those that nobody has heard of.
        types.push_back("type" + std::to_string(i));
    for (const bool isDark : {false, true}) {
        const zelDraw::Theme& theme = zelDraw::theme(isDark);
        EXPECT_EQ(isDark, theme.isDark);
        for (const std::string& type : types) {
            for (const Colour ground :
                 {theme.page, theme.body, theme.head, theme.compoundHead, theme.stub, theme.bar})
                EXPECT_LE(3, contrast(zelDraw::typeColour(type, isDark), ground))
                    << type << (isDark ? " dark on " : " light on ") << zelDraw::colourText(ground);
        }
    }
}

TEST(Theme, TextsAreReadOnTheirGrounds)
{
    for (const bool isDark : {false, true}) {
        const zelDraw::Theme& theme = zelDraw::theme(isDark);
        for (const Colour text : {theme.name, theme.text}) {
            for (const Colour ground : {theme.page, theme.body, theme.head, theme.compoundHead})
                EXPECT_LE(7, contrast(text, ground)) << zelDraw::colourText(text);
        }
        for (const Colour ground : {theme.body, theme.head, theme.compoundHead, theme.stub}) {
            EXPECT_LE(3, contrast(theme.faint, ground));
            EXPECT_LE(3, contrast(theme.selection, ground));
            EXPECT_LE(3, contrast(theme.error, ground));
            EXPECT_LE(3, contrast(theme.good, ground));
        }
    }
}

TEST(Theme, TheShapeSaysTheKindOfData)
{
    using zelDraw::PortShape;
    const std::pair<const char*, PortShape> cases[] = {
        {"float", PortShape::Circle},       {"integer", PortShape::Circle},
        {"boolean", PortShape::Circle},     {"", PortShape::Circle},
        {"vector3", PortShape::Diamond},    {"matrix44", PortShape::Diamond},
        {"color3", PortShape::Square},      {"filename", PortShape::Pill},
        {"string", PortShape::Pill},        {"surfaceshader", PortShape::Triangle},
        {"BSDF", PortShape::Triangle},      {"material", PortShape::Hexagon},
        {"color4array", PortShape::Square}, {"pineapple", PortShape::Circle},
    };
    std::set<PortShape> shapes;
    for (const auto& [type, shape] : cases) {
        EXPECT_EQ(shape, zelDraw::shapeOf(type)) << type;
        shapes.insert(shape);
        for (const zelDraw::Corner& corner : zelDraw::outlineOf(shape)) {
            EXPECT_GE(6.5, std::abs(corner.x));
            EXPECT_GE(6.5, std::abs(corner.y));
        }
    }
    EXPECT_EQ(static_cast<std::size_t>(zelDraw::kPortShapes), shapes.size());
    EXPECT_NE(zelDraw::typeColour("pineapple", false), zelDraw::typeColour("pineapple2", false));
}
