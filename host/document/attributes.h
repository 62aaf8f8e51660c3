#pragma once

#include "document/pointers.h"

#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace shading {

class Document;
struct Piece;

/// What has attributes: a node, a port (of a compound that of its node), or an element that is no
/// part of the network, such as a look. One of the three is given; the root node is the document.
struct AttributeOwner {
    NodePtr node;
    PortPtr port;
    const Piece* element = nullptr; ///< Of the document as it was read, or of a backdrop.
};

/// The text of an attribute. One that names a node follows it when that is renamed.
struct AttributeValue {
    std::string text; ///< Empty: there is no such attribute, which is the same to the format.
    NodePtr named;    ///< Empty: it is the text alone.

    std::string now() const { return named ? named->getName() : text; }
    bool operator==(const AttributeValue& other) const
    {
        return text == other.text && named == other.named;
    }
};

/// The attributes that the network does not show, as they were read and as edits changed them: a
/// colour space, a unit, a position. The host manages the others itself, so they are not asked for
/// here.
///
/// Contract: holds what an edit gave one to, so that it has it again when undo brings it back.
class Attributes {
public:
    struct Changed {
        AttributeOwner owner;
        std::map<std::string, AttributeValue> values; ///< By their names.
    };

    /// Must outlive it.
    explicit Attributes(Document& document) : m_document(document) {}

    std::string get(const AttributeOwner& owner, const std::string& name) const;
    /// All that it has: in the order of the document, then those that edits added, by name.
    std::vector<std::pair<std::string, std::string>> all(const AttributeOwner& owner) const;
    /// A step of the edit that runs. Without a value it is as it was read.
    void set(const AttributeOwner& owner,
             const std::string& name,
             const std::optional<AttributeValue>& value);

    /// What edits changed, in no order that means something.
    const std::vector<Changed>& changed() const { return m_changed; }
    /// What an edit made of it; null: nothing.
    const AttributeValue* changedValue(const AttributeOwner& owner, const std::string& name) const;
    /// The element that the owner was read from; null when there is none.
    const Piece* elementOf(const AttributeOwner& owner) const;
    /// The node that the attributes show at: the owner, that of the port, or the root node.
    NodePtr nodeOf(const AttributeOwner& owner) const;
    /// The node of the compound that has the backdrop; empty for what is none.
    NodePtr frameOwner(const AttributeOwner& owner) const;

private:
    Document& m_document;
    std::vector<Changed> m_changed;
    std::unordered_map<const void*, std::size_t> m_places; ///< In m_changed, by the owner.
};

} // namespace shading
