#pragma once

namespace shading {

/// Definitions of one node type that are alike but for one data type T, or a single one.
///
/// Ports stand as "NAME TYPE VALUE; NAME TYPE VALUE", the value may be missing. `$T` stands for T,
/// a value `$1.0` for one of T that has 1.0 everywhere.
struct TableRow {
    const char* group; ///< The sub-library.
    const char* nodeType;
    const char* name;  ///< Of the definition, "ND_add_$T".
    const char* types; ///< One definition for each of these T. "": a single definition.
    const char* inputs;
    const char* outputs;
    const char* version = "";
    bool isDefaultVersion = false;
};

extern const TableRow kTable[];
extern const int kTableSize;

/// How an input is shown, in all definitions of the node type.
struct HintRow {
    const char* nodeType;
    const char* input;
    const char* type; ///< "": whatever its type is.
    /// "uiname=Gain; uimin=0": attributes of the format.
    const char* hints;
};

extern const HintRow kHints[];
extern const int kHintsSize;

} // namespace shading
