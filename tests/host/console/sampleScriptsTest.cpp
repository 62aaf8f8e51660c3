#include "console/console.h"
#include "definitions/pluginModule.h"
#include "paths.h"
#include "randomEdits.h"
#include "reading/openDocument.h"
#include "testDocument.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

const struct {
    const char* script;
    const char* document;
    const char* printed;
    std::vector<const char*> show;
    const char* result; ///< What those commands print.
} kScripts[] = {
    {"tidy_wall.zelsh",
     "weathered_brick_wall.mtlx",
     "Top.NG_wall.joints\nTop.NG_wall.soot\nTop.NG_wall.moss\n",
     {"ls Top.NG_wall.soot", "ports Top.NG_wall.joints", "ports Top.NG_wall.soot",
      "ports Top.NG_wall.moss"},
     "soot_fade ramptb\nsoot_falling multiply\nsoot_mask multiply\nsoot_mask_safe clamp\n"
     "soot_streaks noise2d\nsoot_uv multiply\nsooty_wall mix\n"
     "input row_position float \"\" <- Top.NG_wall.brick_axes.outy -> "
     "Top.NG_wall.joints.across_brick.in\n"
     "input column_position float \"\" <- Top.NG_wall.shifted_u.out -> "
     "Top.NG_wall.joints.along_brick.in\n"
     "input width float \"0.0\" <- Top.NG_wall.mortar_width -> "
     "Top.NG_wall.joints.beside_bed_joint.value2, Top.NG_wall.joints.beside_head_joint.value2\n"
     "output mask float \"\" <- Top.NG_wall.joints.brick_mask.out -> Top.NG_wall.clean_wall.mix, "
     "Top.NG_wall.height.in1, Top.NG_wall.wall_roughness.mix\n"
     "input uv vector2 \"\" <- Top.NG_wall.wall_uv.out -> Top.NG_wall.soot.soot_fade.texcoord, "
     "Top.NG_wall.soot.soot_uv.in1\n"
     "input amount float \"1.0\" <- Top.NG_wall.soot_amount -> Top.NG_wall.soot.soot_mask.in2\n"
     "input clean_color color3 \"0.0, 0.0, 0.0\" <- Top.NG_wall.clean_wall.out -> "
     "Top.NG_wall.soot.sooty_wall.bg\n"
     "output sooty_color color3 \"\" <- Top.NG_wall.soot.sooty_wall.out -> "
     "Top.NG_wall.moss.wall_color\n"
     "input height float \"1.0\" <- Top.NG_wall.moss_height -> Top.NG_wall.moss.above_moss.high\n"
     "input patch_uv vector2 \"\" <- Top.NG_wall.grain_uv.out -> "
     "Top.NG_wall.moss.moss_patches.texcoord\n"
     "input wall_color color3 \"0.0, 0.0, 0.0\" <- Top.NG_wall.soot.sooty_color -> "
     "Top.NG_wall.moss.mossy_wall.fg\n"
     "input moss_color color3 \"0.0, 0.0, 0.0\" <- Top.NG_wall.moss_color -> "
     "Top.NG_wall.moss.mossy_wall.bg\n"
     "input uv vector2 \"0.0, 0.0\" <- Top.NG_wall.wall_uv.out -> Top.NG_wall.moss.wall_height.in\n"
     "output mossy_color color3 \"\" <- Top.NG_wall.moss.mossy_wall.out -> Top.NG_wall.color\n"},
    {"expose_stain.zelsh",
     "rusty_painted_gate.mtlx",
     "",
     {"ports Top", "connections Top.NG_gate.rust"},
     "input age float \"0.45\" -> Top.NG_gate.age\n"
     "input stain_strength float \"0.6\" -> Top.NG_gate.stain_strength\n"
     "Top.NG_gate.rust.pits.density -> Top.NG_gate.rust.pits.pit_point.in2\n"
     "Top.NG_gate.rust.pits.depth -> Top.NG_gate.rust.depth\n"
     "Top.NG_gate.rust.pits.depth -> Top.NG_gate.rust.rust_pitted.in2\n"
     "Top.NG_gate.rust.pits.pit_coordinates -> Top.NG_gate.rust.stain.position\n"
     "Top.NG_gate.rust.pits.pit_depth.out -> Top.NG_gate.rust.pits.depth\n"
     "Top.NG_gate.rust.pits.pit_noise.out -> Top.NG_gate.rust.pits.pit_depth.in\n"
     "Top.NG_gate.rust.pits.pit_point.out -> Top.NG_gate.rust.pits.pit_coordinates\n"
     "Top.NG_gate.rust.pits.pit_point.out -> Top.NG_gate.rust.pits.pit_noise.position\n"
     "Top.NG_gate.rust.pits.point -> Top.NG_gate.rust.pits.pit_point.in1\n"
     "Top.NG_gate.rust.point -> Top.NG_gate.rust.pits.point\n"
     "Top.NG_gate.rust.rust_hue.out -> Top.NG_gate.rust.rust_pitted.in1\n"
     "Top.NG_gate.rust.rust_pitted.out -> Top.NG_gate.rust.color\n"
     "Top.NG_gate.rust.stain.out -> Top.NG_gate.rust.rust_hue.mix\n"
     "Top.NG_gate.rust.stain_strength -> Top.NG_gate.rust.stain.amplitude\n"},
    {"swap_panes.zelsh",
     "stained_glass_window.mtlx",
     "Top.pane_place ND_place2d_vector2\nTop.new_picture ND_image_color3\n",
     {"ls", "ports Top.pane_picture", "ports Top.window_uv"},
     "window_uv geompropvalue\npane_channels separate3\nred_or_green max\nbrightest max\n"
     "is_glass ifgreater\nvivid_panes saturate\nis_lead invert\nwindow_roughness mix\n"
     "SR_window standard_surface\nStained_Glass_Window surfacematerial\npane_place place2d\n"
     "pane_picture image\n"
     "input file filename \"textures/roses_<UDIM>.exr\"\ninput layer string \"\"\n"
     "input default color3 \"0.0, 0.0, 0.0\"\ninput texcoord vector2 \"\" <- Top.pane_place.out\n"
     "input uaddressmode string \"mirror\"\ninput vaddressmode string \"periodic\"\n"
     "input filtertype string \"linear\"\ninput framerange string \"\"\n"
     "input frameoffset integer \"0\"\ninput frameendaction string \"constant\"\n"
     "output out color3 \"\" -> Top.pane_channels.in, Top.vivid_panes.in\n"
     "input geomprop string \"UV0\"\ninput default vector2 \"0.0, 0.0\"\n"
     "output out vector2 \"\" -> Top.pane_place.texcoord\n"},
};

TEST(SampleScripts, DoTheirEditAndAreUndoneAsAWhole)
{
    const std::string examples = paths::kExamples;
    shading::PluginModule plugin;
    std::string problem;
    ASSERT_TRUE(plugin.load(paths::kShadingPlugin, problem)) << problem;
    for (const auto& c : kScripts) {
        SCOPED_TRACE(c.script);
        shading::OpenOptions options;
        options.runtime = plugin.runtime();
        std::vector<shading::Message> messages;
        const auto document =
            shading::openDocument(examples + "/documents/" + c.document, options, messages);
        ASSERT_TRUE(document);
        const std::string before = networkText(*document);
        std::ostringstream out;
        shading::Session session = sessionOn(*document);
        shading::Console shell(session, out, out);
        shell.add(shading::viewCommands());
        shell.add(shading::libraryCommands());
        shell.add(shading::editCommands());
        EXPECT_TRUE(shell.run("source '" + examples + "/scripts/" + c.script + "'"));
        EXPECT_EQ(c.printed, withoutNotes(out.str()));
        out.str("");
        for (const char* const line : c.show)
            shell.run(line);
        EXPECT_EQ(c.result, out.str());
        shell.run("undo " + std::to_string(shell.edits().history().undoCount()));
        EXPECT_EQ(before, networkText(*document));
    }
}

} // namespace
