#include "paths.h"
#include "reading/openDocument.h"
#include "testDocument.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <sys/stat.h>

namespace {

std::string bytesOf(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// True when the text opens, or when one error says where it does not.
bool isAnswered(const std::string& result)
{
    static const std::regex error(R"(t\.mtlx:\d+:\d+: error: .+\n)");
    return result == "opened" || std::regex_match(result, error);
}

TEST(Damage, ACutDocumentIsRefusedWithItsPlace)
{
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(paths::kDocuments)) {
        const std::string bytes = bytesOf(entry.path());
        // The end of the document element: behind it the file is whole.
        const std::size_t end = bytes.rfind("</materialx>") + 12;
        for (std::size_t size = 0; size < bytes.size(); size += 100) {
            SCOPED_TRACE(entry.path().string() + " cut at " + std::to_string(size));
            const std::string result = openText(bytes.substr(0, size));
            EXPECT_TRUE(isAnswered(result)) << result;
            EXPECT_EQ(size >= end, result == "opened");
            ++count;
        }
    }
    EXPECT_LT(150, count);
}

TEST(Damage, SwappedTagsAreRefusedWithTheirPlace)
{
    const std::string bytes = bytesOf(std::string(paths::kDocuments) + "/rusty_painted_gate.mtlx");
    const std::regex tag("</[a-z0-9]+>");
    int count = 0;
    for (std::sregex_iterator i(bytes.begin(), bytes.end(), tag), next = i, end; i != end; ++i) {
        ++next;
        if (next == end || i->str() == next->str())
            continue;
        std::string swapped = bytes;
        swapped.replace(static_cast<std::size_t>(next->position()), next->str().size(), i->str());
        swapped.replace(static_cast<std::size_t>(i->position()), i->str().size(), next->str());
        const std::string result = openText(swapped);
        EXPECT_NE(std::string::npos, result.find("Start-end tags mismatch\n")) << result;
        EXPECT_TRUE(isAnswered(result)) << result;
        ++count;
    }
    EXPECT_LT(10, count);
}

const struct {
    const char* name;
    const char* text;
    const char* result;
} kEncodings[] = {
    {"utf-16 said, utf-8 there", "<?xml version='1.0' encoding='UTF-16'?>\n<materialx/>", nullptr},
    {"utf-8 said, latin-1 there", "<?xml version='1.0' encoding='UTF-8'?>\n<materialx a='\xE9'/>",
     "t.mtlx:2:15: error: not XML: the bytes that follow are not UTF-8\n"},
    {"latin-1 without a word", "<materialx a='caf\xE9'/>",
     "t.mtlx:1:18: error: not XML: the bytes that follow are not UTF-8\n"},
    {"a character cut off", "<materialx/>\n\xE2\x82",
     "t.mtlx:2:1: error: not XML: the bytes that follow are not UTF-8\n"},
    {"a character written too long", "<materialx a='\xC0\xAF'/>",
     "t.mtlx:1:15: error: not XML: the bytes that follow are not UTF-8\n"},
    {"half of a pair", "<materialx a='\xED\xA0\x80'/>",
     "t.mtlx:1:15: error: not XML: the bytes that follow are not UTF-8\n"},
    {"ascii said", "<?xml version='1.0' encoding='US-ASCII'?>\n<materialx a='\xC3\xA9'/>",
     "t.mtlx:2:15: error: not XML: the bytes that follow are not US-ASCII\n"},
};

TEST(Damage, AWrongEncodingIsRefusedWithThePlaceOfTheFirstBadByte)
{
    for (const auto& c : kEncodings) {
        SCOPED_TRACE(c.name);
        const std::string result = openText(c.text);
        EXPECT_TRUE(result != "opened" && isAnswered(result)) << result;
        EXPECT_EQ(c.result ? c.result : result, result);
    }
}

TEST(Damage, ALongValueIsAValue)
{
    const std::size_t megabyte = 1U << 20U;
    const std::string value(16 * megabyte, '1');
    const TestDocument document("<n name='n' type='t'><input name='i' type='t' value='" + value +
                                "'/></n>");
    ASSERT_TRUE(document.opened) << document.messages.substr(0, 200);
    const ZEL::AddRefWrapper<ZEL::Node> node = document.opened->findNodeFromPath("Top.n");
    EXPECT_TRUE(value == node->inputs()["i"]->getPortDefaultValue());
}

TEST(Damage, WhatIsNoRegularFileIsRefusedWithoutWaitingForIt)
{
    const TestFile file("");
    const std::string fifo = file.path() + ".fifo";
    ASSERT_EQ(0, mkfifo(fifo.c_str(), 0600));
    for (const std::string& path : {fifo, std::string("/dev/zero")}) {
        std::vector<shading::Message> messages;
        EXPECT_FALSE(shading::openDocument(path, {}, messages));
        ASSERT_EQ(1U, messages.size());
        EXPECT_EQ(path + ":1:1: error: cannot be read: Not a regular file",
                  shading::messageText(messages[0]));
    }
}

} // namespace
