#pragma once

#include "session/session.h"

#include <memory>
#include <string>
#include <vector>

/// A file with that text in a folder of its own, which goes with it.
class TestFile {
public:
    explicit TestFile(const std::string& text, const char* name = "t.mtlx");
    TestFile(const TestFile&) = delete;
    TestFile& operator=(const TestFile&) = delete;
    ~TestFile();

    const std::string& path() const { return m_path; }

private:
    std::string m_folder;
    std::string m_path;
};

std::string fileBytes(const std::string& path);

/// A document of those elements, opened. Line 1 is the first of the elements.
struct TestDocument {
    explicit TestDocument(const std::string& elements, bool isStrict = false);

    /// What the commands, one a line, print on both outputs.
    std::string run(const std::string& commands) const;

    /// The same with the commands that edit, up to the first that is refused.
    std::string edit(const std::string& commands) const;

    std::string messages; ///< One a line, without the folder of the file.
    std::unique_ptr<shading::Document> opened;
};

/// The lines but for notes, which say of a graph that it lies in another one.
std::string withoutNotes(const std::string& lines);

/// A session on a document that somebody else owns. It ends before the next one begins.
shading::Session sessionOn(shading::Document& document);

/// The messages of a file with that text, one a line, without its folder; "opened" when it opens.
std::string openText(const std::string& text);
