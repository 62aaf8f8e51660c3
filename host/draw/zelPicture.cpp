#include "draw/zelPicture.h"

#include <map>
#include <set>

namespace zelDraw {

namespace {

std::string typeOf(ZEL::Port& port)
{
    const ZEL::AddRefWrapper<ZEL::PortDataType> type = port.getDataType();
    return type ? type->getName() : "";
}

PicturePort pictureOf(ZEL::Port& port)
{
    return {port.getName(), port.getFullPathName().getName(), typeOf(port), {}, port.isConnected()};
}

/// What one frame shows of the network's ports, by the roles that they have in its connections.
struct FramePorts {
    std::vector<std::pair<ZEL::Port*, PictureEnd>> sources; ///< In the order of drawing.
    std::vector<std::pair<ZEL::Port*, PictureEnd>> targets;
    std::map<const ZEL::Port*, PictureEnd> sourceEnds;
};

class Builder {
public:
    explicit Builder(const PictureOptions& options) : m_options(options) {}

    PictureBox build(ZEL::Compound& compound)
    {
        const ZEL::AddRefWrapper<ZEL::Node> node = compound.getAsNode();
        PictureBox picture = node ? describe(*node) : PictureBox{};
        open(picture, compound, m_options.depth);
        // From the inside out: a frame that gets stubs moves the frames in it.
        for (auto frame = m_frames.rbegin(); frame != m_frames.rend(); ++frame)
            connect(*frame->first, frame->second);
        return picture;
    }

private:
    /// The node with its ports, closed.
    PictureBox describe(ZEL::Node& node)
    {
        PictureBox box;
        box.kind = node.isCompound() ? PictureBox::Kind::Compound : PictureBox::Kind::Node;
        box.name = node.getName();
        box.path = node.getFullPathName().getName();
        box.type = node.getNodeTypeName();
        box.isUnknown = !node.isCompound() && m_options.isUnknown && m_options.isUnknown(node);
        for (ZEL::Port* const port : node.inputs()) {
            if (isShown(node, *port))
                box.inputs.push_back(inputOf(*port));
            else
                ++box.omittedInputs;
        }
        for (ZEL::Port* const port : node.outputs())
            box.outputs.push_back(pictureOf(*port));
        return box;
    }

    PicturePort inputOf(ZEL::Port& port)
    {
        PicturePort input = pictureOf(port);
        input.isConnected = input.isConnected || !hiddenSourceOf(port).empty();
        return input;
    }

    /// Makes a frame of the box, and of those in it while depth is left.
    void open(PictureBox& box, ZEL::Compound& compound, int depth)
    {
        box.kind = PictureBox::Kind::Frame;
        FramePorts ports;
        addEdgePorts(box, compound, ports);
        for (ZEL::Node* const node : compound.nodes())
            addNode(box, *node, ports);
        for (const auto& source : ports.sources)
            ports.sourceEnds.insert(source);
        for (const auto& target : ports.targets)
            m_targets.insert(target.first);
        m_frames.emplace_back(&box, std::move(ports));
        if (depth <= 0)
            return;
        std::size_t index = 0;
        for (ZEL::Node* const node : compound.nodes()) {
            if (node->isCompound())
                open(box.boxes[index], *node->getAsCompound(), depth - 1);
            ++index;
        }
    }

    /// The frame's dots are those of its node; the inner ports mirror them by position.
    void addEdgePorts(PictureBox& frame, ZEL::Compound& compound, FramePorts& ports)
    {
        std::size_t index = 0;
        for (ZEL::Port* const port : compound.innerInputs()) {
            if (index == frame.inputs.size())
                frame.inputs.push_back(pictureOf(*port));
            frame.inputs[index].isConnected |= port->isConnected();
            ports.sources.emplace_back(port, PictureEnd{PictureEnd::kEdge, index++});
        }
        index = 0;
        for (ZEL::Port* const port : compound.innerOutputs()) {
            if (index == frame.outputs.size())
                frame.outputs.push_back(pictureOf(*port));
            frame.outputs[index].isConnected |=
                port->isConnected() || !hiddenSourceOf(*port).empty();
            ports.targets.emplace_back(port, PictureEnd{PictureEnd::kEdge, index++});
        }
    }

    void addNode(PictureBox& frame, ZEL::Node& node, FramePorts& ports)
    {
        const std::size_t box = frame.boxes.size();
        std::size_t index = 0;
        for (ZEL::Port* const port : node.inputs()) {
            if (isShown(node, *port))
                ports.targets.emplace_back(port, PictureEnd{box, index++});
        }
        index = 0;
        for (ZEL::Port* const port : node.outputs())
            ports.sources.emplace_back(port, PictureEnd{box, index++});
        frame.boxes.push_back(describe(node));
    }

    void connect(PictureBox& frame, const FramePorts& ports)
    {
        std::map<const ZEL::Port*, PictureEnd> stubs;
        const auto add = [&](ZEL::Port& from, PictureEnd source, ZEL::Port& to, PictureEnd target) {
            frame.connections.push_back({source,
                                         target,
                                         from.getFullPathName().getName(),
                                         to.getFullPathName().getName(),
                                         typeOf(from),
                                         {}});
        };
        for (const auto& target : ports.targets) {
            for (ZEL::Port* const source : target.first->connectedTo()) {
                const auto found = ports.sourceEnds.find(source);
                add(*source,
                    found != ports.sourceEnds.end() ? found->second
                                                    : stubOf(frame, stubs, *source, true),
                    *target.first, target.second);
            }
            const std::string hidden = hiddenSourceOf(*target.first);
            if (!hidden.empty())
                frame.connections.push_back(
                    {addStub(frame, {hidden, hidden, typeOf(*target.first), {}, true}, true),
                     target.second,
                     hidden,
                     target.first->getFullPathName().getName(),
                     typeOf(*target.first),
                     {}});
        }
        std::map<const ZEL::Port*, PictureEnd> targetStubs;
        for (const auto& source : ports.sources) {
            for (ZEL::Port* const target : source.first->connectedTo()) {
                if (m_targets.count(target) == 0)
                    add(*source.first, source.second, *target,
                        stubOf(frame, targetStubs, *target, false));
            }
        }
    }

    /// The end of a stub for that port, made at its first call.
    PictureEnd stubOf(PictureBox& frame,
                      std::map<const ZEL::Port*, PictureEnd>& stubs,
                      ZEL::Port& port,
                      bool isSource)
    {
        const auto known = stubs.find(&port);
        if (known != stubs.end())
            return known->second;
        return stubs[&port] = addStub(frame, pictureOf(port), isSource);
    }

    static PictureEnd addStub(PictureBox& frame, const PicturePort& end, bool isSource)
    {
        PictureBox stub;
        stub.kind = PictureBox::Kind::Stub;
        stub.name = end.path;
        stub.path = end.path;
        (isSource ? stub.outputs : stub.inputs).push_back(end);
        frame.boxes.push_back(stub);
        return {frame.boxes.size() - 1, 0};
    }

    bool isShown(ZEL::Node& node, ZEL::Port& port) const
    {
        return !m_options.isShown || node.isCompound() || port.isConnected() ||
               m_options.isShown(node, port);
    }

    std::string hiddenSourceOf(ZEL::Port& port) const
    {
        return m_options.hiddenSource ? m_options.hiddenSource(port) : "";
    }

    const PictureOptions& m_options;
    std::vector<std::pair<PictureBox*, FramePorts>> m_frames; ///< Outer before inner.
    std::set<const ZEL::Port*> m_targets;                     ///< All that are drawn, in any frame.
};

} // namespace

PictureBox makePicture(ZEL::Compound& compound, const PictureOptions& options)
{
    return Builder(options).build(compound);
}

bool drawCompound(ZEL::Compound& compound,
                  const PictureOptions& options,
                  std::string& svg,
                  std::string& problem)
{
    PictureBox picture = makePicture(compound, options);
    if (!placePicture(picture, problem))
        return false;
    svg = pictureSvg(picture);
    return true;
}

} // namespace zelDraw
