#include "window/workspace/nodeCatalogue.h"

#include "document/document.h"

#include <QStringList>
#include <algorithm>
#include <map>
#include <set>
#include <tuple>

namespace shading {

namespace {

constexpr int kFewTypes = 4; ///< Of so many all variants are listed.

/// Which of the variants people mean: the plain types before those for special cases.
int commonness(const QString& dataType)
{
    static const QStringList order = {"color3", "float",         "vector3", "vector2",
                                      "color4", "surfaceshader", "vector4"};
    const auto place = order.indexOf(dataType);
    return static_cast<int>(place < 0 ? order.size() : place);
}

bool isOld(const DefinitionRecord& record)
{
    return !record.version.empty() && !record.isDefaultVersion;
}

class Collector {
public:
    explicit Collector(std::vector<NodeCatalogue::Entry>& entries) : m_entries(entries) {}

    void add(ZEL::NodeLibrary& library, const QString& category)
    {
        for (int i = 0; i < library.getNumberOfNodes(); ++i) {
            const DefinitionPtr definition = Definition::from(library.getNodeAt(i));
            if (definition && !definition->record().outputs.empty() &&
                m_names.insert(definition->record().name).second)
                add(definition, category);
        }
        for (int i = 0; i < library.getNumberOfSubLibraries(); ++i) {
            const auto inner = library.getSubLibraryAt(i);
            const QString name = QString::fromUtf8(inner->getName());
            add(*inner, category.isEmpty() ? name : category + '/' + name);
        }
    }

    /// An old version is there when nothing newer makes the same.
    void addOld()
    {
        for (NodeCatalogue::Entry& entry : m_old) {
            const auto same = [&](const NodeCatalogue::Entry& other) {
                return other.type == entry.type && other.output == entry.output;
            };
            if (std::none_of(m_entries.begin(), m_entries.end(), same))
                m_entries.push_back(std::move(entry));
        }
    }

private:
    void add(const DefinitionPtr& definition, const QString& category)
    {
        const DefinitionRecord& record = definition->record();
        const QString output = record.outputs.size() > 1
                                   ? QString("multioutput")
                                   : QString::fromStdString(record.outputs.front().type);
        std::vector<NodeCatalogue::Entry>& entries = isOld(record) ? m_old : m_entries;
        entries.push_back({definition, QString::fromUtf8(definition->getName()), output, category});
    }

    std::vector<NodeCatalogue::Entry>& m_entries;
    std::vector<NodeCatalogue::Entry> m_old;
    std::set<std::string> m_names;
};

QString typeOfInput(const NodeCatalogue::Entry& entry, const std::string& name)
{
    for (const PortDescription& port : entry.definition->record().inputs) {
        if (port.name == name)
            return QString::fromStdString(port.type);
    }
    return {};
}

/// Says of each of those entries, which make the same, what inputs the others have not.
void tellApart(NodeCatalogue::Entry* begin, NodeCatalogue::Entry* end)
{
    for (NodeCatalogue::Entry* entry = begin; entry != end && end - begin > 1; ++entry) {
        QStringList own;
        for (const PortDescription& port : entry->definition->record().inputs) {
            const QString type = QString::fromStdString(port.type);
            const bool isShared = std::all_of(begin, end, [&](const auto& other) {
                return typeOfInput(other, port.name) == type;
            });
            if (!isShared)
                own.append(QString::fromStdString(port.name) + ' ' + type);
        }
        entry->inputs = own.join(QStringLiteral(", "));
    }
}

bool isWordStart(const QString& name, int place)
{
    if (place == 0)
        return true;
    const QChar before = name[place - 1];
    const QChar here = name[place];
    return before == '_' || (here.isUpper() && !before.isUpper()) ||
           (here.isDigit() && !before.isDigit());
}

bool isSubsequence(const QString& word, const QString& name)
{
    int place = 0;
    for (const QChar letter : name)
        place += place < word.size() && letter.toLower() == word[place] ? 1 : 0;
    return place == word.size();
}

std::vector<QString> wordsOf(const QString& text)
{
    std::vector<QString> words;
    for (const QString& word : text.toLower().split(' ', Qt::SkipEmptyParts))
        words.push_back(word);
    return words;
}

} // namespace

QString NodeCatalogue::Entry::name() const
{
    return definition ? QString::fromStdString(definition->record().name) : type;
}

std::string fittingPort(const DefinitionPtr& definition, const NodeCatalogue::Filter& filter)
{
    if (!definition)
        return "";
    const DefinitionRecord& record = definition->record();
    const std::vector<PortDescription>& ports = filter.isInput ? record.inputs : record.outputs;
    const auto found = std::find_if(ports.begin(), ports.end(), [&](const PortDescription& port) {
        return port.type == filter.dataType;
    });
    return found == ports.end() ? "" : found->name;
}

NodeCatalogue::NodeCatalogue(Document& document)
{
    Collector collector(m_entries);
    if (const auto library = document.getRuntime()->getNodeLibrary())
        collector.add(*library, QString());
    collector.addOld();
    const auto key = [](const Entry& entry) {
        return std::make_tuple(entry.category, entry.type, commonness(entry.output), entry.name());
    };
    std::sort(m_entries.begin(), m_entries.end(),
              [&](const Entry& a, const Entry& b) { return key(a) < key(b); });
    for (std::size_t i = 0, next = 0; i < m_entries.size(); i = next) {
        while (next < m_entries.size() && m_entries[next].type == m_entries[i].type &&
               m_entries[next].output == m_entries[i].output)
            ++next;
        tellApart(m_entries.data() + i, m_entries.data() + next);
    }
    m_entries.push_back({nullptr, "nodegraph", QString(), "graph"});
}

NodeCatalogue::Rank NodeCatalogue::rankOf(const QString& word, const QString& name)
{
    const QString low = name.toLower();
    if (low == word)
        return Rank::Exact;
    if (low.startsWith(word))
        return Rank::Prefix;
    int part = -1;
    for (int place = static_cast<int>(low.indexOf(word)); place >= 0;
         place = static_cast<int>(low.indexOf(word, place + 1))) {
        if (isWordStart(name, place))
            return Rank::WordStart;
        part = place;
    }
    if (part >= 0)
        return Rank::Part;
    return isSubsequence(word, name) ? Rank::Subsequence : Rank::None;
}

NodeCatalogue::Rank NodeCatalogue::rankOf(const std::vector<QString>& words,
                                          const Entry& entry) const
{
    Rank rank = rankOf(words.front(), entry.type);
    if (rank == Rank::None && entry.name().compare(words.front(), Qt::CaseInsensitive) == 0)
        rank = Rank::Exact;
    if (rank == Rank::None && entry.category.contains(words.front(), Qt::CaseInsensitive))
        rank = Rank::Category;
    for (std::size_t i = 1; i < words.size() && rank != Rank::None; ++i) {
        const bool fits = entry.output.startsWith(words[i], Qt::CaseInsensitive) ||
                          entry.type.contains(words[i], Qt::CaseInsensitive) ||
                          entry.category.contains(words[i], Qt::CaseInsensitive);
        rank = fits ? rank : Rank::None;
    }
    return rank;
}

std::vector<NodeCatalogue::Hit> NodeCatalogue::search(const QString& text,
                                                      const std::optional<Filter>& filter,
                                                      const std::vector<QString>& recent) const
{
    const std::vector<QString> words = wordsOf(text);
    std::vector<Hit> hits;
    std::map<QString, int> counts; // Of the variants that fit.
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        const Entry& entry = m_entries[i];
        const std::string port = filter ? fittingPort(entry.definition, *filter) : "";
        if (filter && port.empty())
            continue;
        const Rank rank = words.empty() ? Rank::Exact : rankOf(words, entry);
        if (rank == Rank::None)
            continue;
        hits.push_back({static_cast<int>(i), rank, 1, port});
        ++counts[entry.type];
    }
    const auto age = [&](const Hit& hit) {
        return std::find(recent.begin(), recent.end(), entry(hit).name()) - recent.begin();
    };
    std::stable_sort(hits.begin(), hits.end(), [&](const Hit& a, const Hit& b) {
        const bool isAll = words.empty();
        return std::make_tuple(a.rank, isAll ? age(a) : 0, isAll ? 0 : entry(a).type.size()) <
               std::make_tuple(b.rank, isAll ? age(b) : 0, isAll ? 0 : entry(b).type.size());
    });
    if (counts.size() <= kFewTypes || words.size() > 1)
        return hits;
    std::set<QString> seen;
    const auto isHidden = [&](Hit& hit) {
        hit.variants = counts[entry(hit).type];
        return !seen.insert(entry(hit).type).second;
    };
    std::vector<Hit> shown;
    for (Hit& hit : hits) {
        if (!isHidden(hit))
            shown.push_back(hit);
    }
    return shown;
}

} // namespace shading
