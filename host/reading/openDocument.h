#pragma once

#include "base/message.h"
#include "document/document.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace shading {

struct OpenOptions {
    bool isStrict = false; ///< Warnings become errors: the document does not open.
    /// Not owned; must outlive the document. Null: the document makes an empty one of its own.
    ZEL::Runtime* runtime = nullptr;
    /// Called now and then with how far the opening is; empty: nobody is told.
    std::function<void(int permille)> progress;
};

/// Opens the document in that file. Adds what is wrong with it to messages, in the order of lines.
/// Empty when there is an error among them. The runtime knows the document when it is whole.
std::unique_ptr<Document>
openDocument(const std::string& path, const OpenOptions& options, std::vector<Message>& messages);

/// A new document with nothing in it, to be saved into that file.
std::unique_ptr<Document> newDocument(const std::string& path, const OpenOptions& options);

/// A document of that text in UTF-8, with the runtime and the definitions of the other one, which
/// nobody else knows. Empty, with an error, when it cannot be opened.
std::unique_ptr<Document> openText(const std::string& text, const Document& other, Message& error);

} // namespace shading
