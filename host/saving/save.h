#pragma once

#include "base/progress.h"
#include "document/pointers.h"
#include "saving/draftNetwork.h"

#include <string>
#include <vector>

namespace shading {

class Document;

// Who is told how far a work is, an empty function where nobody is, must not change the document
// meanwhile. When that cancels, the only problem is that it was cancelled, and nothing is changed.

/// The bytes of a file that holds the document's network now, in the encoding that the document
/// came in. What was not edited stands byte for byte as it was read. The result, opened again, has
/// the same network but for what a document has no place for: the order of a compound's nodes and
/// of those that a port feeds, the value behind a source, and an input of a plain node that has
/// neither value nor source. False when the format cannot say something, with everything of that
/// kind that was found. The document is not changed.
bool saveToBytes(Document& document,
                 std::string& bytes,
                 std::vector<SaveProblem>& problems,
                 const Progress::Tell& tell = {});

/// The nodes, all of one compound, as a document of the format that has nothing else, on one line.
/// A backdrop around some of them and no other node goes along. What holds for them from around
/// them holds for the whole. False when the format cannot say it.
bool copyToText(Document& document,
                const std::vector<NodePtr>& nodes,
                std::string& text,
                std::vector<SaveProblem>& problems,
                const Progress::Tell& tell = {});

/// What becomes of a file that somebody else changed since the document was read from it or saved
/// into it.
enum class ChangedFile {
    Keep,    ///< The document is not saved.
    Replace, ///< What the other one wrote is lost.
};

/// Saves into the file, which is replaced only when all of it is written. False when it is not:
/// then the file is as it was.
bool saveToFile(Document& document,
                const std::string& path,
                std::vector<SaveProblem>& problems,
                ChangedFile changed = ChangedFile::Keep,
                const Progress::Tell& tell = {});
/// Says all that saveToFile would say but for what the disk does, and writes nothing.
bool maySaveToFile(Document& document,
                   const std::string& path,
                   std::vector<SaveProblem>& problems,
                   ChangedFile changed = ChangedFile::Keep,
                   const Progress::Tell& tell = {});

/// Why the document as it is would not be saved; and where it would, the rules of the format that
/// the file would break, also those that it broke when it was opened: of names, bindings and
/// references. The network shows types and circles itself. Empty for a sound document.
std::vector<SaveProblem> checkDocument(Document& document, const Progress::Tell& tell = {});

} // namespace shading
