#include "window/canvas/sceneTexts.h"

#include "base/utf8.h"

#include <algorithm>

namespace shading {

namespace {

/// Without what no screen can show.
QString shownText(const std::string& text)
{
    std::string clean;
    for (std::size_t i = 0; i < text.size();) {
        const Character character = characterAt(text, i);
        const bool isPlain = isXmlCharacter(character.code) && character.code >= 0x20;
        addUtf8(isPlain ? character.code : 0xFFFD, clean);
        i += character.size;
    }
    return QString::fromStdString(clean);
}

} // namespace

SceneTexts::SceneTexts()
{
    add("");
    addType("");
}

int SceneTexts::add(const std::string& text)
{
    const auto [entry, isNew] = m_numbers.emplace(text, count());
    if (isNew)
        m_texts.push_back(shownText(text));
    return entry->second;
}

int SceneTexts::addType(const std::string& name)
{
    const auto found = std::find(m_types.begin(), m_types.end(), name);
    if (found != m_types.end())
        return static_cast<int>(found - m_types.begin());
    m_types.push_back(name);
    return typeCount() - 1;
}

} // namespace shading
