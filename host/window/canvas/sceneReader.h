#pragma once

#include "window/canvas/sceneData.h"
#include "window/canvas/screenMemory.h"

#include <vector>

namespace shading {

class Document;

/// Reads nodes, bars and connections of one compound into the arrays of a scene. It gives no
/// places.
class SceneReader {
public:
    SceneReader(ZEL::Compound& compound, const ScreenMemory& memory, SceneData& data)
        : m_compound(compound),
          m_memory(memory),
          m_data(data)
    {
    }

    /// Makes a box of the node, which has none.
    int addNode(const NodePtr& node);
    /// Reads the node of the box anew: all but its wires, which are gone, and its place.
    void readNode(int box);
    /// Makes, reads anew or removes the bars, which have no wires. A root without ports has none.
    void readBars(bool isRoot);
    /// Makes the wires that end in the box, and those that lead from it to what is not shown.
    void connect(int box);
    /// Makes the wires from the box to boxes that are not touched.
    void connectToUntouched(int box);

private:
    void addPort(SceneBox& box, ZEL::Port& port, bool takes);
    void placePorts(SceneBox& box) const;
    void readBar(int& box, ZEL::PortList& ports, bool isInput, bool isWanted);
    SceneEnd endOf(ZEL::Port& port, bool takes) const;
    SceneEnd stubOf(ZEL::Port& port, bool takes);
    SceneEnd addStub(const PortPtr& port, const std::string& name, int type, bool takes);
    int typeOf(ZEL::Port& port);

    ZEL::Compound& m_compound;
    const ScreenMemory& m_memory;
    SceneData& m_data;
};

} // namespace shading
