// The sample host passes the kit.
#include "document/compound.h"
#include "document/node.h"
#include "reading/openDocument.h"
#include "zelConformance.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace {

class ShadingHost : public ZEL::ConformanceHost {
public:
    ShadingHost()
    {
        m_folder = (std::filesystem::temp_directory_path() / "shadingXXXXXX").string();
        if (!mkdtemp(m_folder.data()))
            std::abort();
        std::ofstream(path()) << "<materialx version=\"1.39\"/>\n";
    }
    ~ShadingHost() override
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
    }

    std::unique_ptr<ZEL::Container> makeDocument() override
    {
        std::vector<shading::Message> messages;
        return shading::openDocument(path(), {}, messages);
    }
    ZEL::AddRefWrapper<ZEL::Node> makeNode(ZEL::Container& document, const char* name) override
    {
        return shading::Node::createNew(&document, name);
    }
    std::string uuidOf(ZEL::Container& document) override
    {
        return static_cast<shading::Document&>(document).uuid();
    }
    std::string savePath() override { return m_folder + "/saved.mtlx"; }

private:
    std::string path() const { return m_folder + "/empty.mtlx"; }

    std::string m_folder;
};

const bool kShadingHost =
    ZEL::registerConformanceTests("ShadingHost", [] { return std::make_unique<ShadingHost>(); });

} // namespace
