// Steps with what is no part of a network: property lists, results, runtimes, libraries, plugins.

#include "zelFuzzSteps.h"

#include <algorithm>
#include <string>

namespace zelFuzz {

namespace {

void usePropertyList(Universe& universe)
{
    Input& input = universe.input;
    ZEL::PropertyList list;
    std::vector<std::pair<std::string, std::string>> pairs;
    for (int i = input.number(12); i >= 0; --i) {
        const std::string key = input.name();
        switch (input.number(6)) {
        case 0:
        case 1: {
            const std::string value = input.text(6);
            list.addStringPair(key.c_str(), value.c_str());
            pairs.emplace_back(key, value);
            break;
        }
        case 2:
            list.addChildList(key.c_str())->addStringPair("in", key.c_str());
            break;
        case 3:
            if (ZEL::PropertyList* const child = list.getChildList(key.c_str())) {
                list = *child;
                pairs.assign(1, {"in", key});
            }
            break;
        case 4:
            list.addChildList(key.c_str());
            *list.getChildList(key.c_str()) = ZEL::PropertyList(list);
            list.removeAll();
            pairs.clear();
            break;
        default:
            list.getChildList(key.c_str());
        }
    }
    expect(list.getNumberOfPairs() == static_cast<int>(pairs.size()), "a pair is lost");
    for (const auto& [key, value] : pairs) {
        const auto first =
            std::find_if(pairs.begin(), pairs.end(),
                         [&name = key](const auto& pair) { return pair.first == name; });
        expect(list.getStringPairValue(key.c_str()) == first->second, "a key finds another value");
    }
}

void useStatus(Universe& universe)
{
    const std::string text = universe.input.text(20);
    ZEL::StatusStr status(text.c_str());
    expect(!status && text == status.getErrorString(), "a message is another one");
    const ZEL::StatusStr formatted("%s on %s", text.c_str(), universe.input.name());
    expect(std::string(formatted.getErrorString()).find(text) == 0, "a format lost its argument");
    status.setErrorString(status.getErrorString());
    status = formatted;
    expect(!status, "a copied failure is none");
}

ZEL::AddRefWrapper<ZEL::NodeLibrary> makeLibrary(Input& input, int depth)
{
    ZEL::AddRefWrapper<ZEL::NodeLibrary> library = ZEL::NodeLibrary::createNew(input.name());
    for (int i = input.number(4); i > 0; --i)
        library->addNode(input.name());
    for (int i = depth > 0 ? input.number(3) : 0; i > 0; --i)
        library->addSubLibrary(makeLibrary(input, depth - 1));
    return library;
}

void useRuntime(Universe& universe)
{
    Input& input = universe.input;
    ZEL::Runtime& runtime = universe.runtime;
    ZEL::AddRefWrapper<ZEL::NodeLibrary> library = makeLibrary(input, 3);
    runtime.setNodeLibrary(library);
    const char* const name = input.name();
    if (const ZEL::AddRefWrapper<ZEL::NodeLibrary> found = runtime.findLibrary(name))
        expect(std::string(name) == found->getName(), "another library was found");
    library->sort();
    for (int i = 1; i < library->getNumberOfNodes(); ++i)
        expect(!ZEL::sortFunc(library->getNodeAt(i), library->getNodeAt(i - 1)), "not sorted");
    library->removeSubLibraryAt(input.number(4) - 1);
    const TypePtr type = runtime.createPortDataType(name);
    expect(type == runtime.getPortDataType(name), "two types of a name");
}

void rebuild(Universe& universe)
{
    if (universe.depth == 0)
        universe.runtime.forceRebuildCompounds();
}

/// Plugins that live as long as the process, for the registry keeps their runtimes.
void usePlugins(Universe& universe)
{
    static ZEL::Runtime first;
    static ZEL::Runtime second;
    first.setName("first");
    second.setName("second");
    ZEL::Host host;
    host.initialize(universe.input.name());
    ZEL::selfRegisterPlugin(
        [](ZEL::PluginRegistrar& registrar, ZEL::PluginInfo& info) {
            info.setUserName(first.getName());
            registrar.registerRuntime(info, &second);
            registrar.registerRuntime(info, &first);
        },
        [](const ZEL::PluginInfo& info) {
            expect(std::string("first") == info.getUserName(), "a plugin has another name");
        });
    expect(host.getRuntimeByName("second") == &second && host.getRuntimeAt(1) == &first,
           "a runtime is lost");
    host.terminate();
    const char* const uuid = universe.input.name();
    ZEL::Container::registerWithUUID(uuid, &universe);
    expect(ZEL::Container::getFromUUID(uuid) == &universe, "a document is lost");
    ZEL::Container::registerWithUUID(uuid, nullptr);
}

} // namespace

const std::vector<Step> kValueSteps = {
    {"usePropertyList", usePropertyList}, {"useStatus", useStatus},
    {"useRuntime", useRuntime},           {"rebuild", rebuild},
    {"usePlugins", usePlugins},
};

} // namespace zelFuzz
