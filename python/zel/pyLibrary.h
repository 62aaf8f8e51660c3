#pragma once

#include "binding/half.h"
#include "binding/shared.h"
#include "zel.h"

namespace zelpython {

/// What a definition made in Python is apart from its Python half.
class CountedDefinition : public ZEL::NodeDefinition {
public:
    explicit CountedDefinition(const char* name)
        : NodeDefinition(name),
          m_live("zel.NodeDefinition")
    {
    }

private:
    LiveCount m_live;
};

/// A definition made in Python, whose class may be written there.
class PyDefinition final : public Halved<CountedDefinition> {
public:
    using Halved::Halved;

    void setName(const char* name) override;
    void appendString(const char* text) override;
};

class CountedLibrary : public ZEL::NodeLibrary {
public:
    CountedLibrary() : m_live("zel.NodeLibrary") {}

private:
    LiveCount m_live;
};

/// A library made in Python. It has a Python half, so that the collector sees who holds it.
class PyLibrary final : public Halved<CountedLibrary> {};

} // namespace zelpython
