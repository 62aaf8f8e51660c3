#pragma once

#include "zel.h"

#include <QString>
#include <optional>
#include <utility>
#include <vector>

namespace shading {

class Document;

/// How the values of an input are edited.
struct ValueStyle {
    enum class Kind {
        None, ///< There is nothing to type: only a connection gives it something.
        Text,
        Boolean,
        Numbers, ///< One or more.
        Color,   ///< Three or four.
        Choice,  ///< One of a list.
        FileName,
    };

    Kind kind = Kind::Text;
    int count = 1;   ///< Of numbers.
    int columns = 1; ///< In which they stand.
    bool isInteger = false;
    std::optional<double> least; ///< Dragging ends there; typing does not.
    std::optional<double> most;
    std::optional<double> range;                      ///< Of the usual values.
    std::optional<double> step;                       ///< Empty: by the size of the number.
    QString unit;                                     ///< "degree"; empty: none.
    std::vector<std::pair<QString, QString>> choices; ///< What is shown, and the value.
    QString label;                                    ///< Empty: the name does.
    QString folder;                                   ///< "Coat/Colour"; empty: in none.
    QString help;

    /// Editors of equal styles show the same.
    bool operator==(const ValueStyle& other) const;
};

/// That of an input, by its data type and what its definition and the document say of it.
ValueStyle styleOf(Document& document, ZEL::Port& port);

} // namespace shading
