#include "shadingTable.h"

namespace shading {

namespace {

const char* const kTuple = "color3 color4 vector2 vector3 vector4";
const char* const kTupleVectors = "vector2 vector3 vector4";
const char* const kVectors = "float vector2 vector3 vector4";
const char* const kNumeric = "color3 float color4 vector2 vector3 vector4";
const char* const kNumericInteger = "color3 float color4 vector2 vector3 vector4 integer";
const char* const kPlain = "color3 float color4 vector2 vector3 vector4 integer boolean";
const char* const kValues =
    "color3 float color4 vector2 vector3 vector4 integer boolean string filename";
const char* const kMixed = "color3 float color4 vector2 vector3 vector4 surfaceshader "
                           "displacementshader volumeshader";
const char* const kAny = "color3 float color4 vector2 vector3 vector4 integer boolean string "
                         "filename surfaceshader displacementshader volumeshader lightshader";

} // namespace

// The nodes that shading artists use most, as the format defines them, by group and node type; the
// variants for matrices are left out.
// clang-format off
const TableRow kTable[] = {
    {"adjustment", "colorcorrect", "ND_colorcorrect_color3", "",
     "in color3 1, 1, 1; hue float 0; saturation float 1; gamma float 1; lift float 0; "
     "gain float 1; contrast float 1; contrastpivot float 0.5; exposure float 0", "out color3"},
    {"adjustment", "colorcorrect", "ND_colorcorrect_color4", "",
     "in color4 1, 1, 1, 0; hue float 0; saturation float 1; gamma float 1; lift float 0; "
     "gain float 1; contrast float 1; contrastpivot float 0.5; exposure float 0", "out color4"},
    {"adjustment", "contrast", "ND_contrast_$T", kNumeric,
     "in $T $0.0; amount $T $1.0; pivot $T $0.5", "out $T"},
    {"adjustment", "contrast", "ND_contrast_$TFA", kTuple,
     "in $T $0.0; amount float 1.0; pivot float 0.5", "out $T"},
    {"adjustment", "hsvadjust", "ND_hsvadjust_$T", "color3 color4",
     "in $T $0.0; amount vector3 0.0, 1.0, 1.0", "out $T"},
    {"adjustment", "luminance", "ND_luminance_color3", "",
     "in color3 0.0, 0.0, 0.0; lumacoeffs color3 0.2722287, 0.6740818, 0.0536895", "out color3"},
    {"adjustment", "luminance", "ND_luminance_color4", "",
     "in color4 0.0, 0.0, 0.0, 0.0; lumacoeffs color3 0.2722287, 0.6740818, 0.0536895",
     "out color4"},
    {"adjustment", "range", "ND_range_$T", kNumeric,
     "in $T $0.0; inlow $T $0.0; inhigh $T $1.0; gamma $T $1.0; outlow $T $0.0; "
     "outhigh $T $1.0; doclamp boolean false", "out $T"},
    {"adjustment", "range", "ND_range_$TFA", kTuple,
     "in $T $0.0; inlow float 0.0; inhigh float 1.0; gamma float 1.0; outlow float 0.0; "
     "outhigh float 1.0; doclamp boolean false", "out $T"},
    {"adjustment", "remap", "ND_remap_$T", kNumeric,
     "in $T $0.0; inlow $T $0.0; inhigh $T $1.0; outlow $T $0.0; outhigh $T $1.0", "out $T"},
    {"adjustment", "remap", "ND_remap_$TFA", kTuple,
     "in $T $0.0; inlow float 0.0; inhigh float 1.0; outlow float 0.0; outhigh float 1.0",
     "out $T"},
    {"adjustment", "saturate", "ND_saturate_color3", "",
     "in color3 0.0, 0.0, 0.0; amount float 1.0; "
     "lumacoeffs color3 0.2722287, 0.6740818, 0.0536895", "out color3"},
    {"adjustment", "saturate", "ND_saturate_color4", "",
     "in color4 0.0, 0.0, 0.0, 0.0; amount float 1.0; "
     "lumacoeffs color3 0.2722287, 0.6740818, 0.0536895", "out color4"},
    {"adjustment", "smoothstep", "ND_smoothstep_$T", kNumeric,
     "in $T $0.0; low $T $0.0; high $T $1.0", "out $T"},
    {"adjustment", "smoothstep", "ND_smoothstep_$TFA", kTuple,
     "in $T $0.0; low float 0.0; high float 1.0", "out $T"},
    {"channel", "combine2", "ND_combine2_color4CF", "",
     "in1 color3 0.0, 0.0, 0.0; in2 float 0.0", "out color4"},
    {"channel", "combine2", "ND_combine2_vector2", "",
     "in1 float 0.0; in2 float 0.0", "out vector2"},
    {"channel", "combine2", "ND_combine2_vector4VF", "",
     "in1 vector3 0.0, 0.0, 0.0; in2 float 0.0", "out vector4"},
    {"channel", "combine2", "ND_combine2_vector4VV", "",
     "in1 vector2 0.0, 0.0; in2 vector2 0.0, 0.0", "out vector4"},
    {"channel", "combine3", "ND_combine3_$T", "color3 vector3",
     "in1 float 0.0; in2 float 0.0; in3 float 0.0", "out $T"},
    {"channel", "combine4", "ND_combine4_$T", "color4 vector4",
     "in1 float 0.0; in2 float 0.0; in3 float 0.0; in4 float 0.0", "out $T"},
    {"channel", "convert", "ND_convert_$T_color4",
     "color3 float vector2 vector3 vector4 integer boolean", "in $T $0.0", "out color4"},
    {"channel", "convert", "ND_convert_$T_vector2",
     "color3 float color4 vector3 vector4 integer boolean", "in $T $0.0", "out vector2"},
    {"channel", "convert", "ND_convert_$T_vector3",
     "color3 float color4 vector2 vector4 integer boolean", "in $T $0.0", "out vector3"},
    {"channel", "convert", "ND_convert_$T_vector4",
     "color3 float color4 vector2 vector3 integer boolean", "in $T $0.0", "out vector4"},
    {"channel", "convert", "ND_convert_$T_color3",
     "float color4 vector2 vector3 vector4 integer boolean", "in $T $0.0", "out color3"},
    {"channel", "convert", "ND_convert_$T_float", "integer boolean", "in $T $0.0", "out float"},
    {"channel", "convert", "ND_convert_integer_boolean", "", "in integer 0", "out boolean"},
    {"channel", "convert", "ND_convert_boolean_integer", "", "in boolean false", "out integer"},
    {"channel", "extract", "ND_extract_$T", kTuple, "in $T $0.0; index integer 0", "out float"},
    {"channel", "separate3", "ND_separate3_color3", "",
     "in color3 0.0, 0.0, 0.0", "outr float; outg float; outb float"},
    {"channel", "separate3", "ND_separate3_vector3", "",
     "in vector3 0.0, 0.0, 0.0", "outx float; outy float; outz float"},
    {"channel", "separate4", "ND_separate4_color4", "",
     "in color4 0.0, 0.0, 0.0, 0.0", "outr float; outg float; outb float; outa float"},
    {"channel", "separate4", "ND_separate4_vector4", "",
     "in vector4 0.0, 0.0, 0.0, 0.0", "outx float; outy float; outz float; outw float"},
    {"compositing", "mix", "ND_mix_$T", kMixed, "fg $T $0.0; bg $T $0.0; mix float 0.0", "out $T"},
    {"compositing", "mix", "ND_mix_$T_$T", kTuple, "fg $T $0.0; bg $T $0.0; mix $T $0.0", "out $T"},
    {"compositing", "over", "ND_over_color4", "",
     "fg color4 0.0, 0.0, 0.0, 0.0; bg color4 0.0, 0.0, 0.0, 0.0; mix float 1.0", "out color4"},
    {"conditional", "ifequal", "ND_ifequal_$T", kNumericInteger,
     "value1 float 0.0; value2 float 0.0; in1 $T $0.0; in2 $T $0.0", "out $T"},
    {"conditional", "ifequal", "ND_ifequal_$TI", kNumericInteger,
     "value1 integer 0; value2 integer 0; in1 $T $0.0; in2 $T $0.0", "out $T"},
    {"conditional", "ifequal", "ND_ifequal_$TB", kNumericInteger,
     "value1 boolean false; value2 boolean false; in1 $T $0.0; in2 $T $0.0", "out $T"},
    {"conditional", "ifequal", "ND_ifequal_boolean", "",
     "value1 float 1.0; value2 float 0.0", "out boolean"},
    {"conditional", "ifequal", "ND_ifequal_booleanI", "",
     "value1 integer 1; value2 integer 0", "out boolean"},
    {"conditional", "ifequal", "ND_ifequal_booleanB", "",
     "value1 boolean false; value2 boolean false", "out boolean"},
    {"conditional", "ifgreater", "ND_ifgreater_$T", kNumericInteger,
     "value1 float 1.0; value2 float 0.0; in1 $T $0.0; in2 $T $0.0", "out $T"},
    {"conditional", "ifgreater", "ND_ifgreater_$TI", kNumericInteger,
     "value1 integer 1; value2 integer 0; in1 $T $0.0; in2 $T $0.0", "out $T"},
    {"conditional", "ifgreater", "ND_ifgreater_boolean", "",
     "value1 float 1.0; value2 float 0.0", "out boolean"},
    {"conditional", "ifgreater", "ND_ifgreater_booleanI", "",
     "value1 integer 1; value2 integer 0", "out boolean"},
    {"convolution2d", "blur", "ND_blur_$T", kNumeric,
     "in $T $0.0; size float 0.0; filtertype string box", "out $T"},
    {"convolution2d", "heighttonormal", "ND_heighttonormal_vector3", "",
     "in float 0.0; scale float 1.0; texcoord vector2", "out vector3"},
    {"geometric", "bump", "ND_bump_vector3", "",
     "height float 0; scale float 1; normal vector3; tangent vector3; bitangent vector3",
     "out vector3"},
    {"geometric", "geompropvalue", "ND_geompropvalue_$T", kPlain,
     "geomprop string; default $T $0.0", "out $T"},
    {"geometric", "normal", "ND_normal_vector3", "", "space string object", "out vector3"},
    {"geometric", "position", "ND_position_vector3", "", "space string object", "out vector3"},
    {"geometric", "tangent", "ND_tangent_vector3", "",
     "space string object; index integer 0", "out vector3"},
    {"geometric", "texcoord", "ND_texcoord_$T", "vector2 vector3", "index integer 0", "out $T"},
    {"material", "surfacematerial", "ND_surfacematerial", "",
     "surfaceshader surfaceshader; backsurfaceshader surfaceshader; "
     "displacementshader displacementshader", "out material"},
    {"math", "absval", "ND_absval_$T", kNumeric, "in $T $0.0", "out $T"},
    {"math", "add", "ND_add_$T", kNumericInteger, "in1 $T $0.0; in2 $T $0.0", "out $T"},
    {"math", "add", "ND_add_$TFA", kTuple, "in1 $T $0.0; in2 float 0.0", "out $T"},
    {"math", "clamp", "ND_clamp_$T", kNumeric, "in $T $0.0; low $T $0.0; high $T $1.0", "out $T"},
    {"math", "clamp", "ND_clamp_$TFA", kTuple,
     "in $T $0.0; low float 0.0; high float 1.0", "out $T"},
    {"math", "divide", "ND_divide_$T", kNumeric, "in1 $T $0.0; in2 $T $1.0", "out $T"},
    {"math", "divide", "ND_divide_$TFA", kTuple, "in1 $T $0.0; in2 float 1.0", "out $T"},
    {"math", "dotproduct", "ND_dotproduct_$T", kTupleVectors,
     "in1 $T $0.0; in2 $T $0.0", "out float"},
    {"math", "floor", "ND_floor_$T", kNumeric, "in $T $0.0", "out $T"},
    {"math", "floor", "ND_floor_integer", "", "in float 0.0", "out integer"},
    {"math", "invert", "ND_invert_$T", kNumeric, "in $T $0.0; amount $T $1.0", "out $T"},
    {"math", "invert", "ND_invert_$TFA", kTuple, "in $T $0.0; amount float 1.0", "out $T"},
    {"math", "magnitude", "ND_magnitude_$T", kTupleVectors, "in $T $0.0", "out float"},
    {"math", "max", "ND_max_$T", kNumeric, "in1 $T $0.0; in2 $T $0.0", "out $T"},
    {"math", "max", "ND_max_$TFA", kTuple, "in1 $T $0.0; in2 float 0.0", "out $T"},
    {"math", "min", "ND_min_$T", kNumeric, "in1 $T $0.0; in2 $T $0.0", "out $T"},
    {"math", "min", "ND_min_$TFA", kTuple, "in1 $T $0.0; in2 float 0.0", "out $T"},
    {"math", "modulo", "ND_modulo_$T", kNumeric, "in1 $T $0.0; in2 $T $1.0", "out $T"},
    {"math", "modulo", "ND_modulo_$TFA", kTuple, "in1 $T $0.0; in2 float 1.0", "out $T"},
    {"math", "multiply", "ND_multiply_$T", kNumeric, "in1 $T $0.0; in2 $T $1.0", "out $T"},
    {"math", "multiply", "ND_multiply_$TFA", kTuple, "in1 $T $0.0; in2 float 1.0", "out $T"},
    {"math", "normalize", "ND_normalize_$T", kTupleVectors, "in $T $0.0", "out $T"},
    {"math", "normalmap", "ND_normalmap_$T", "float vector2",
     "in vector3 0.5, 0.5, 1.0; scale $T $1.0; normal vector3; tangent vector3; "
     "bitangent vector3", "out vector3"},
    {"math", "place2d", "ND_place2d_vector2", "",
     "texcoord vector2 0.0, 0.0; pivot vector2 0.0,0.0; scale vector2 1.0,1.0; "
     "rotate float 0.0; offset vector2 0.0,0.0; operationorder integer 0", "out vector2"},
    {"math", "power", "ND_power_$T", kNumeric, "in1 $T $0.0; in2 $T $1.0", "out $T"},
    {"math", "power", "ND_power_$TFA", kTuple, "in1 $T $0.0; in2 float 1.0", "out $T"},
    {"math", "rotate2d", "ND_rotate2d_vector2", "",
     "in vector2 0.0, 0.0; amount float 0.0", "out vector2"},
    {"math", "sin", "ND_sin_$T", kVectors, "in $T $0.0", "out $T"},
    {"math", "sqrt", "ND_sqrt_$T", kVectors, "in $T $0.0", "out $T"},
    {"math", "subtract", "ND_subtract_$T", kNumericInteger, "in1 $T $0.0; in2 $T $0.0", "out $T"},
    {"math", "subtract", "ND_subtract_$TFA", kTuple, "in1 $T $0.0; in2 float 0.0", "out $T"},
    {"organization", "dot", "ND_dot_$T", kAny, "in $T $0.0; note string", "out $T"},
    {"pbr", "UsdPreviewSurface", "ND_UsdPreviewSurface_surfaceshader", "",
     "diffuseColor color3 0.18, 0.18, 0.18; emissiveColor color3 0, 0, 0; "
     "useSpecularWorkflow integer 0; specularColor color3 0, 0, 0; metallic float 0; "
     "roughness float 0.5; clearcoat float 0; clearcoatRoughness float 0.01; opacity float 1; "
     "opacityMode integer 0; opacityThreshold float 0; ior float 1.5; normal vector3 0, 0, 1; "
     "displacement float 0; occlusion float 1", "out surfaceshader", "2.6", true},
    {"pbr", "add", "ND_add_bsdf", "", "in1 BSDF; in2 BSDF", "out BSDF"},
    {"pbr", "add", "ND_add_edf", "", "in1 EDF; in2 EDF", "out EDF"},
    {"pbr", "add", "ND_add_vdf", "", "in1 VDF; in2 VDF", "out VDF"},
    {"pbr", "mix", "ND_mix_bsdf", "", "fg BSDF; bg BSDF; mix float 0.0", "out BSDF"},
    {"pbr", "mix", "ND_mix_edf", "", "fg EDF; bg EDF; mix float 0.0", "out EDF"},
    {"pbr", "mix", "ND_mix_vdf", "", "fg VDF; bg VDF; mix float 0.0", "out VDF"},
    {"pbr", "multiply", "ND_multiply_bsdfC", "", "in1 BSDF; in2 color3 1.0, 1.0, 1.0", "out BSDF"},
    {"pbr", "multiply", "ND_multiply_bsdfF", "", "in1 BSDF; in2 float 1.0", "out BSDF"},
    {"pbr", "multiply", "ND_multiply_edfC", "", "in1 EDF; in2 color3 1.0, 1.0, 1.0", "out EDF"},
    {"pbr", "multiply", "ND_multiply_edfF", "", "in1 EDF; in2 float 1.0", "out EDF"},
    {"pbr", "multiply", "ND_multiply_vdfC", "", "in1 VDF; in2 color3 1.0, 1.0, 1.0", "out VDF"},
    {"pbr", "multiply", "ND_multiply_vdfF", "", "in1 VDF; in2 float 1.0", "out VDF"},
    {"pbr", "open_pbr_surface", "ND_open_pbr_surface_surfaceshader", "",
     "base_weight float 1.0; base_color color3 0.8, 0.8, 0.8; "
     "base_diffuse_roughness float 0.0; base_metalness float 0.0; specular_weight float 1.0; "
     "specular_color color3 1, 1, 1; specular_roughness float 0.3; specular_ior float 1.5; "
     "specular_roughness_anisotropy float 0.0; transmission_weight float 0.0; "
     "transmission_color color3 1, 1, 1; transmission_depth float 0.0; "
     "transmission_scatter color3 0, 0, 0; transmission_scatter_anisotropy float 0.0; "
     "transmission_dispersion_scale float 0.0; "
     "transmission_dispersion_abbe_number float 20.0; subsurface_weight float 0; "
     "subsurface_color color3 0.8, 0.8, 0.8; subsurface_radius float 1.0; "
     "subsurface_radius_scale color3 1.0, 0.5, 0.25; subsurface_scatter_anisotropy float 0.0; "
     "fuzz_weight float 0.0; fuzz_color color3 1, 1, 1; fuzz_roughness float 0.5; "
     "coat_weight float 0.0; coat_color color3 1, 1, 1; coat_roughness float 0.0; "
     "coat_roughness_anisotropy float 0.0; coat_ior float 1.6; coat_darkening float 1.0; "
     "thin_film_weight float 0; thin_film_thickness float 0.5; thin_film_ior float 1.4; "
     "emission_luminance float 0.0; emission_color color3 1, 1, 1; geometry_opacity float 1; "
     "geometry_thin_walled boolean false; geometry_normal vector3; "
     "geometry_coat_normal vector3; geometry_tangent vector3; geometry_coat_tangent vector3",
     "out surfaceshader", "1.1.1", true},
    {"pbr", "standard_surface", "ND_standard_surface_surfaceshader", "",
     "base float 1.0; base_color color3 0.8, 0.8, 0.8; diffuse_roughness float 0; "
     "metalness float 0; specular float 1; specular_color color3 1, 1, 1; "
     "specular_roughness float 0.2; specular_IOR float 1.5; specular_anisotropy float 0; "
     "specular_rotation float 0; transmission float 0; transmission_color color3 1, 1, 1; "
     "transmission_depth float 0; transmission_scatter color3 0, 0, 0; "
     "transmission_scatter_anisotropy float 0; transmission_dispersion float 0; "
     "transmission_extra_roughness float 0; subsurface float 0; "
     "subsurface_color color3 1, 1, 1; subsurface_radius color3 1, 1, 1; "
     "subsurface_scale float 1; subsurface_anisotropy float 0; sheen float 0; "
     "sheen_color color3 1, 1, 1; sheen_roughness float 0.3; coat float 0; "
     "coat_color color3 1, 1, 1; coat_roughness float 0.1; coat_anisotropy float 0.0; "
     "coat_rotation float 0.0; coat_IOR float 1.5; coat_normal vector3; "
     "coat_affect_color float 0; coat_affect_roughness float 0; thin_film_thickness float 0; "
     "thin_film_IOR float 1.5; emission float 0; emission_color color3 1, 1, 1; "
     "opacity color3 1, 1, 1; thin_walled boolean false; normal vector3; tangent vector3",
     "out surfaceshader", "1.0.1", true},
    {"pbr", "standard_surface", "ND_standard_surface_surfaceshader_100", "",
     "base float 0.8; base_color color3 1.0, 1.0, 1.0; diffuse_roughness float 0; "
     "metalness float 0; specular float 1; specular_color color3 1, 1, 1; "
     "specular_roughness float 0.2; specular_IOR float 1.5; specular_anisotropy float 0; "
     "specular_rotation float 0; transmission float 0; transmission_color color3 1, 1, 1; "
     "transmission_depth float 0; transmission_scatter color3 0, 0, 0; "
     "transmission_scatter_anisotropy float 0; transmission_dispersion float 0; "
     "transmission_extra_roughness float 0; subsurface float 0; "
     "subsurface_color color3 1, 1, 1; subsurface_radius color3 1, 1, 1; "
     "subsurface_scale float 1; subsurface_anisotropy float 0; sheen float 0; "
     "sheen_color color3 1, 1, 1; sheen_roughness float 0.3; coat float 0; "
     "coat_color color3 1, 1, 1; coat_roughness float 0.1; coat_anisotropy float 0.0; "
     "coat_rotation float 0.0; coat_IOR float 1.5; coat_normal vector3; "
     "coat_affect_color float 0; coat_affect_roughness float 0; thin_film_thickness float 0; "
     "thin_film_IOR float 1.5; emission float 0; emission_color color3 1, 1, 1; "
     "opacity color3 1, 1, 1; thin_walled boolean false; normal vector3; tangent vector3",
     "out surfaceshader", "1.0.0", false},
    {"procedural", "constant", "ND_constant_$T", kValues, "value $T $0.0", "out $T"},
    {"procedural2d", "cellnoise2d", "ND_cellnoise2d_float", "", "texcoord vector2", "out float"},
    {"procedural2d", "checkerboard", "ND_checkerboard_color3", "",
     "color1 color3 1.0, 1.0, 1.0; color2 color3 0.0, 0.0, 0.0; uvtiling vector2 8, 8; "
     "uvoffset vector2 0, 0; texcoord vector2", "out color3"},
    {"procedural2d", "fractal2d", "ND_fractal2d_$T", "color3 vector3",
     "amplitude vector3 1.0, 1.0, 1.0; octaves integer 3; lacunarity float 2.0; "
     "diminish float 0.5; texcoord vector2", "out $T"},
    {"procedural2d", "fractal2d", "ND_fractal2d_$TFA", kTuple,
     "amplitude float 1.0; octaves integer 3; lacunarity float 2.0; diminish float 0.5; "
     "texcoord vector2", "out $T"},
    {"procedural2d", "fractal2d", "ND_fractal2d_float", "",
     "amplitude float 1.0; octaves integer 3; lacunarity float 2.0; diminish float 0.5; "
     "texcoord vector2", "out float"},
    {"procedural2d", "fractal2d", "ND_fractal2d_$T", "color4 vector4",
     "amplitude vector4 1.0, 1.0, 1.0, 1.0; octaves integer 3; lacunarity float 2.0; "
     "diminish float 0.5; texcoord vector2", "out $T"},
    {"procedural2d", "fractal2d", "ND_fractal2d_vector2", "",
     "amplitude vector2 1.0, 1.0; octaves integer 3; lacunarity float 2.0; "
     "diminish float 0.5; texcoord vector2", "out vector2"},
    {"procedural2d", "noise2d", "ND_noise2d_$T", "color3 vector3",
     "amplitude vector3 1.0, 1.0, 1.0; pivot float 0.0; texcoord vector2", "out $T"},
    {"procedural2d", "noise2d", "ND_noise2d_$TFA", kTuple,
     "amplitude float 1.0; pivot float 0.0; texcoord vector2", "out $T"},
    {"procedural2d", "noise2d", "ND_noise2d_float", "",
     "amplitude float 1.0; pivot float 0.0; texcoord vector2", "out float"},
    {"procedural2d", "noise2d", "ND_noise2d_$T", "color4 vector4",
     "amplitude vector4 1.0, 1.0, 1.0, 1.0; pivot float 0.0; texcoord vector2", "out $T"},
    {"procedural2d", "noise2d", "ND_noise2d_vector2", "",
     "amplitude vector2 1.0, 1.0; pivot float 0.0; texcoord vector2", "out vector2"},
    {"procedural2d", "ramp4", "ND_ramp4_$T", kNumeric,
     "valuetl $T $0.0; valuetr $T $0.0; valuebl $T $0.0; valuebr $T $0.0; texcoord vector2",
     "out $T"},
    {"procedural2d", "ramplr", "ND_ramplr_$T", kNumeric,
     "valuel $T $0.0; valuer $T $0.0; texcoord vector2", "out $T"},
    {"procedural2d", "ramptb", "ND_ramptb_$T", kNumeric,
     "valuet $T $0.0; valueb $T $0.0; texcoord vector2", "out $T"},
    {"procedural2d", "worleynoise2d", "ND_worleynoise2d_float", "",
     "texcoord vector2; jitter float 1.0; style integer 0", "out float"},
    {"procedural2d", "worleynoise2d", "ND_worleynoise2d_vector2", "",
     "texcoord vector2; jitter float 1.0; style integer 0", "out vector2"},
    {"procedural2d", "worleynoise2d", "ND_worleynoise2d_vector3", "",
     "texcoord vector2; jitter float 1.0; style integer 0", "out vector3"},
    {"procedural3d", "cellnoise3d", "ND_cellnoise3d_float", "", "position vector3", "out float"},
    {"procedural3d", "fractal3d", "ND_fractal3d_$T", "color3 vector3",
     "amplitude vector3 1.0, 1.0, 1.0; octaves integer 3; lacunarity float 2.0; "
     "diminish float 0.5; position vector3", "out $T"},
    {"procedural3d", "fractal3d", "ND_fractal3d_$TFA", kTuple,
     "amplitude float 1.0; octaves integer 3; lacunarity float 2.0; diminish float 0.5; "
     "position vector3", "out $T"},
    {"procedural3d", "fractal3d", "ND_fractal3d_float", "",
     "amplitude float 1.0; octaves integer 3; lacunarity float 2.0; diminish float 0.5; "
     "position vector3", "out float"},
    {"procedural3d", "fractal3d", "ND_fractal3d_$T", "color4 vector4",
     "amplitude vector4 1.0, 1.0, 1.0, 1.0; octaves integer 3; lacunarity float 2.0; "
     "diminish float 0.5; position vector3", "out $T"},
    {"procedural3d", "fractal3d", "ND_fractal3d_vector2", "",
     "amplitude vector2 1.0, 1.0; octaves integer 3; lacunarity float 2.0; "
     "diminish float 0.5; position vector3", "out vector2"},
    {"procedural3d", "noise3d", "ND_noise3d_$T", "color3 vector3",
     "amplitude vector3 1.0, 1.0, 1.0; pivot float 0.0; position vector3", "out $T"},
    {"procedural3d", "noise3d", "ND_noise3d_$TFA", kTuple,
     "amplitude float 1.0; pivot float 0.0; position vector3", "out $T"},
    {"procedural3d", "noise3d", "ND_noise3d_float", "",
     "amplitude float 1.0; pivot float 0.0; position vector3", "out float"},
    {"procedural3d", "noise3d", "ND_noise3d_$T", "color4 vector4",
     "amplitude vector4 1.0, 1.0, 1.0, 1.0; pivot float 0.0; position vector3", "out $T"},
    {"procedural3d", "noise3d", "ND_noise3d_vector2", "",
     "amplitude vector2 1.0, 1.0; pivot float 0.0; position vector3", "out vector2"},
    {"shader", "convert", "ND_convert_color3_surfaceshader", "",
     "in color3 0, 0, 0", "out surfaceshader", "1.0", true},
    {"shader", "convert", "ND_convert_float_surfaceshader", "",
     "in float 0", "out surfaceshader", "1.0", true},
    {"shader", "convert", "ND_convert_color4_surfaceshader", "",
     "in color4 0, 0, 0, 0", "out surfaceshader", "1.0", true},
    {"shader", "convert", "ND_convert_vector2_surfaceshader", "",
     "in vector2 0, 0", "out surfaceshader", "1.0", true},
    {"shader", "convert", "ND_convert_vector3_surfaceshader", "",
     "in vector3 0, 0, 0", "out surfaceshader", "1.0", true},
    {"shader", "convert", "ND_convert_vector4_surfaceshader", "",
     "in vector4 0, 0, 0, 0", "out surfaceshader", "1.0", true},
    {"shader", "convert", "ND_convert_integer_surfaceshader", "",
     "in integer 0", "out surfaceshader", "1.0", true},
    {"shader", "convert", "ND_convert_boolean_surfaceshader", "",
     "in boolean false", "out surfaceshader", "1.0", true},
    {"texture2d", "image", "ND_image_$T", kNumeric,
     "file filename; layer string; default $T $0.0; texcoord vector2; "
     "uaddressmode string periodic; vaddressmode string periodic; filtertype string linear; "
     "framerange string; frameoffset integer 0; frameendaction string constant", "out $T"},
    {"texture2d", "tiledimage", "ND_tiledimage_$T", kNumeric,
     "file filename; default $T $0.0; texcoord vector2; uvtiling vector2 1.0, 1.0; "
     "uvoffset vector2 0.0, 0.0; realworldimagesize vector2 1.0, 1.0; "
     "realworldtilesize vector2 1.0, 1.0; filtertype string linear; framerange string; "
     "frameoffset integer 0; frameendaction string constant", "out $T"},
    {"texture3d", "triplanarprojection", "ND_triplanarprojection_$T", kNumeric,
     "filex filename; filey filename; filez filename; layerx string; layery string; "
     "layerz string; default $T $0.0; position vector3; normal vector3; upaxis integer 2; "
     "blend float 1.0; filtertype string linear; framerange string; frameoffset integer 0; "
     "frameendaction string constant", "out $T"},
};
// clang-format on

const int kTableSize = static_cast<int>(sizeof(kTable) / sizeof(kTable[0]));

} // namespace shading
