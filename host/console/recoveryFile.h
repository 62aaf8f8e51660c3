#pragma once

#include "base/file.h"
#include "document/change.h"

#include <optional>
#include <string>
#include <vector>

namespace shading {

// What stands in the file of a Recovery: comments, which say what it is about, and for each edit
// its lines; so it is a script too, but where a line has a line end in it: its length stands before
// that.

extern const char* const kRecoveryEnding; ///< Of its name.
extern const char* const kBaseEnding;     ///< Behind that: the document as it was opened.

struct RecoveryHeader {
    std::string document; ///< The path of the document's file.
    bool isNew = false;   ///< There is no such file yet.
    std::optional<FileStamp> stamp;
};

struct RecoveryText {
    RecoveryHeader header;
    std::vector<EditName> edits;
};

std::string textOf(const RecoveryHeader& header);
std::string textOf(const EditName& edit);
/// False when it is no such text. An edit at its end that is not whole is left out.
bool readRecovery(const std::string& text, RecoveryText& result);

} // namespace shading
