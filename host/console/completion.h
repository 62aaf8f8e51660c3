#pragma once

#include <string>
#include <vector>

namespace shading {

class Document;
struct Command;

// Completion of what is typed. `Command::kinds` says what each argument of a command takes:
//
//   command   a command                 child     a node of the compound in an earlier argument
//   node      the path of a node        inner     a port of that compound
//   compound  the path of a compound    type      a data type
//   port      the path of a port        nodetype  a node type or a definition
//   input     the path of an input      library   a node library
//   any       any of these paths        file      a file
//   name      nothing that is known     backdrop  a frame of an earlier compound
//   =a,b      one of these words
//
// The kinds are separated by blanks; "..." behind the last repeats it, and as a word
// of its own all of them. Where a command has several forms they are separated by "|".

/// What the word at the cursor may become.
struct Completion {
    std::size_t start = 0; ///< Where the word begins in the line.
    /// What takes the place of the word up to the cursor: as far as all candidates agree, in quotes
    /// where it must be, with a blank behind it when it is one whole word. Empty: nothing is known.
    std::string text;
    /// All words, sorted, as they are typed. A path ends in "." and a folder in "/" where only more
    /// makes it whole. A single compound stands there twice, also as the start of what is in it.
    std::vector<std::string> candidates;
};

/// Completes the line at its end, which is the cursor. Paths are completed level by level. A name
/// that no path reaches is left out.
Completion
complete(const std::vector<Command>& commands, Document& document, const std::string& line);

} // namespace shading
