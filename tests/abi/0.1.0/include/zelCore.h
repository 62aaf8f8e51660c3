#pragma once

#include "zelAddRefWrapper.h"
#include "zelExport.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace ZEL {

class NameIndex;

/// Base of every object that is shared by counting its holders. The count starts at 0; the
/// createNew functions bring it to 1 by wrapping the new object. The count is a plain integer: one
/// thread only. No wrapper may be made of an object whose count is 0 because it is being
/// constructed or lies on the stack: dropping that wrapper would destroy the object.
class ZEL_API ReferenceCounted {
public:
    ReferenceCounted() = default;
    /// A count belongs to one object: a copy starts at 0, an assignment keeps the target's count.
    ReferenceCounted(const ReferenceCounted& /*other*/) {}
    ReferenceCounted& operator=(const ReferenceCounted& /*other*/) { return *this; }

    // Virtual operations: the order is binary contract.
    /// Destroys the object and frees its memory. Called when the count falls to 0 or below. A
    /// destructor that runs from here may make and drop wrappers of its object.
    virtual void deleteThis();
    virtual ~ReferenceCounted();

    void addRef() { ++m_count; }

    /// Drops one reference and returns how many are left; at 0 or below it calls deleteThis.
    /// Contract: a release on an object that was never referenced destroys it.
    /// The result of the call that destroyed the object means nothing.
    std::int32_t release()
    {
        const std::int32_t left = --m_count;
        if (left <= 0)
            deleteThis();
        return left;
    }

    /// The number of references held, for tests and diagnostics.
    std::int32_t getRefCount() const { return m_count; }

private:
    std::int32_t m_count = 0;
};

/// Base of everything that has a name. Names are compared exactly, byte for byte.
class ZEL_API Namable {
public:
    Namable();
    /// Copies the name; a null one counts as empty.
    Namable(const char* name);
    /// Copies what the other's virtual getName answers.
    Namable(const Namable& other);

    // Virtual operations: the order is binary contract.
    virtual ~Namable();
    /// Never null; empty when unnamed. Valid until the name changes or the object dies.
    virtual const char* getName() const;
    /// Copies the name. A null name is ignored. The object's own getName() may be given.
    virtual void setName(const char* name);
    /// Adds the text at the end of the name. A null text is ignored.
    virtual void appendString(const char* text);

    /// True when both virtual getName answer the same bytes.
    bool operator==(const Namable& other) const;
    bool operator!=(const Namable& other) const { return !(*this == other); }

    /// Calls this object's virtual setName with the other's virtual getName, so that an override
    /// (and the question a port asks) takes effect. The identity stays: only the name is assigned.
    Namable& operator=(const Namable& other);

private:
    friend class NameIndex;
    friend class Node;
    friend class Port;

    explicit Namable(std::string&& name);
    void replaceName(std::string& name);

#if defined(_MSC_VER)
#pragma warning(push)
#pragma warning(disable : 4251) // Private fields: nobody outside reaches them.
#endif
    std::string m_name;
#if defined(_MSC_VER)
#pragma warning(pop)
#endif
    NameIndex* m_index = nullptr; ///< Not owned: knows the name. It clears this when it forgets it.
};

/// The result of an operation that can fail with a message: `if (!status)
/// report(status.getErrorString())`.
class ZEL_API StatusStr {
public:
    /// Success.
    StatusStr() = default;
    /// A failure with that message, also when it is empty. A null message: see setErrorString.
    StatusStr(const char* message);
    /// A failure whose message is formatted by the rules of printf and cut to 1023 bytes. The
    /// format uses no more than these two texts; an arg2 that it uses must not be null. A null
    /// format is success. Contract: a null arg1 makes the format itself the message, unformatted.
    StatusStr(const char* format, const char* arg1, const char* arg2);
    /// Contract: a copy is made from the message alone, so the copy of a status that was set from a
    /// null message is a failure with an empty message although its source is none.
    StatusStr(const StatusStr& other);
    /// Contract: clears first, then copies, without a guard: a status assigned to itself is
    /// success.
    StatusStr& operator=(const StatusStr& other);
    ~StatusStr();

    /// True when this is a failure.
    bool operator!() const;
    /// Never null; "" for success. Valid until the status changes.
    const char* getErrorString() const;
    /// Copies the message and makes this a failure. A null message leaves a record that is no
    /// failure. The status' own getErrorString() may be given.
    void setErrorString(const char* message);
    /// Makes this a success.
    void clearError();

private:
    struct ErrorRecord;
    ErrorRecord* m_error = nullptr; ///< Owned. Null: success.
};

/// A tree of strings: ordered pairs of key and value, and ordered named child lists. Keys and names
/// need not be unique; the first match wins. A value type: copies are deep. A null text counts as
/// empty.
///
/// Texts and child pointers that a list gives out belong to it. They are valid until the next
/// change of the same list.
class ZEL_API PropertyList {
public:
    PropertyList();
    PropertyList(const PropertyList& other);
    /// A list may be assigned one of its own children.
    PropertyList& operator=(const PropertyList& other);
    ~PropertyList();

    // Pairs. Indexes count from 0 in the order of adding.
    /// Adds a pair at the end; one with the same key stays, and lookups go on finding the older
    /// one.
    void addStringPair(const char* key, const char* value);
    /// The value of the first pair with that key, null when there is none.
    const char* getStringPairValue(const char* key);
    int getNumberOfPairs();
    /// False when index is out of range: nothing changed, the outputs neither.
    bool getStringPairAt(int index, const char** key, const char** value);

    // Child lists. Indexes count from 0 in the order of adding.
    /// Adds an empty child list at the end and returns it; one with the same name stays the first.
    PropertyList* addChildList(const char* name);
    /// The first child list of that name, null when there is none.
    PropertyList* getChildList(const char* name);
    int getNumberOfChildList();
    /// False when index is out of range: nothing changed, the outputs neither.
    bool getChildListAt(int index, const char** name, PropertyList** list);

    /// Removes all pairs and all child lists.
    void removeAll();

private:
    struct Impl;
    Impl* m_impl; ///< Owned, never null.
};

} // namespace ZEL
