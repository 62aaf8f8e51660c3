#pragma once

#include "base/message.h"
#include "base/progress.h"
#include "document/document.h"

#include <memory>
#include <string>
#include <vector>

namespace shading {

struct OpenOptions {
    bool isStrict = false; ///< Warnings become errors: the document does not open.
    /// Not owned; must outlive the document. Null: the document makes an empty one of its own.
    ZEL::Runtime* runtime = nullptr;
    /// Told now and then how far the opening is, no longer than some hundredths of a second after
    /// the last time. When it cancels, the document does not open. Empty: nobody is told.
    Progress::Tell progress;
};

/// Destroys a document piece by piece, and tells meanwhile. What it is told cannot stop it.
struct TakeApart {
    Progress::Tell tell; ///< Empty: at once.
    void operator()(Document* document) const;
};
/// A document for a short while.
using PassingDocument = std::unique_ptr<Document, TakeApart>;

/// Opens the document in that file. Adds what is wrong with it to messages, in the order of lines.
/// Empty when there is an error among them, one of which says that it was cancelled. The runtime
/// knows the document when it is whole.
std::unique_ptr<Document>
openDocument(const std::string& path, const OpenOptions& options, std::vector<Message>& messages);

/// A new document with nothing in it, to be saved into that file.
std::unique_ptr<Document> newDocument(const std::string& path, const OpenOptions& options);

/// A document of that text in UTF-8, with the runtime and the definitions of the other one, which
/// nobody else knows. Empty, with an error, when it cannot be opened. Throws Cancelled.
PassingDocument openText(const std::string& text,
                         const Document& other,
                         Message& error,
                         const Progress::Tell& tell = {});

} // namespace shading
