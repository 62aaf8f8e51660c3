#include "session/environment.h"

#include "reading/definitionReader.h"

namespace shading {

Environment::Environment(const std::string& pluginPath, std::string& problem)
{
    m_plugin.load(pluginPath, problem);
}

bool Environment::addLibrary(const std::string& path, std::vector<Message>& messages)
{
    return readDefinitions(path, runtime(), messages);
}

} // namespace shading
