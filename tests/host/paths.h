#pragma once

/// Where the tests find what they open and run.
namespace paths {
extern const char* const kDocuments; ///< The folder examples/documents.
extern const char* const kExamples;  ///< The folder examples.
extern const char* const kNoPlugin;
extern const char* const kOtherPlugin; ///< A plugin without the host's runtime.
extern const char* const kShadingPlugin;
extern const char* const kZelsh;
} // namespace paths
