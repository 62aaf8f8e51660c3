#pragma once

#include <QString>
#include <string>
#include <unordered_map>
#include <vector>

namespace shading {

/// Each text of a scene once, by a number; and each data type likewise. Number 0 is the empty text,
/// and the data type of a port that has none.
class SceneTexts {
public:
    SceneTexts();

    /// The number of the text, made at its first use.
    int add(const std::string& text);
    /// In characters that can be shown.
    const QString& text(int number) const { return m_texts[static_cast<std::size_t>(number)]; }
    int count() const { return static_cast<int>(m_texts.size()); }

    /// The number of a data type.
    int addType(const std::string& name);
    const std::string& type(int number) const { return m_types[static_cast<std::size_t>(number)]; }
    int typeCount() const { return static_cast<int>(m_types.size()); }

private:
    std::vector<QString> m_texts;
    std::unordered_map<std::string, int> m_numbers;
    std::vector<std::string> m_types;
};

} // namespace shading
