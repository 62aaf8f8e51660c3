// The edits of connections.

#include "binding/entry.h"
#include "edits/pathPorts.h"
#include "shading/bind.h"

namespace zelshading {

namespace py = pybind11;
using shading::PortPtr;
using zelpython::guarded;

namespace {

shading::GivenPorts givenPorts(Work& work, const PortArgument& argument)
{
    return argument.object ? shading::givenPorts(argument.object)
                           : shading::givenPorts(work.document(), argument.path);
}

struct PortPair {
    PortPtr source;
    PortPtr target;
};

PortPair pairOf(Work& work, const PortArgument& a, const PortArgument& b, bool isPresent)
{
    PortPair pair;
    work.check(work.edits().findConnection(givenPorts(work, a), givenPorts(work, b), isPresent,
                                           pair.source, pair.target));
    return pair;
}

void connect(PyDocument& self, const PortArgument& source, const PortArgument& target)
{
    Work& work = self.work();
    const PortPair pair = pairOf(work, source, target, false);
    work.check(work.edits().connect(pair.source, pair.target));
}

void disconnect(PyDocument& self, const PortArgument& source, const PortArgument& target)
{
    Work& work = self.work();
    const PortPair pair = pairOf(work, source, target, true);
    work.check(work.edits().disconnect(pair.source, pair.target));
}

void disconnectAll(PyDocument& self, const PortArgument& port)
{
    shading::Edits& edits = self.work().edits();
    self.work().check(port.object ? edits.disconnectAll(port.object)
                                  : edits.disconnectAll(port.path));
}

void reroute(PyDocument& self, const PortArgument& from, const PortArgument& to, bool isInside)
{
    Work& work = self.work();
    PortPtr present;
    PortPtr next;
    work.check(work.edits().findRoute(givenPorts(work, from), givenPorts(work, to), isInside,
                                      present, next) &&
               work.edits().reroute(present, next));
}

void insert(PyDocument& self,
            const NodeArgument& node,
            const PortArgument& source,
            const PortArgument& target)
{
    Work& work = self.work();
    const shading::NodePtr inserted = work.nodeOf(node);
    const PortPair pair = pairOf(work, source, target, true);
    work.check(work.edits().insertNode(inserted, pair.source, pair.target));
}

} // namespace

void bindWireEdits(DocumentClass& document)
{
    document.def("connect", guarded(connect), py::arg("source"), py::arg("target"),
                 "Connects an output to an input, in either order; where both orders make sense, "
                 "the first is the source. A source that the input has is replaced.");
    document.def("disconnect", guarded(disconnect), py::arg("source"), py::arg("target"),
                 "Takes a connection off, given in either order.");
    document.def("disconnectAll", guarded(disconnectAll), py::arg("port"),
                 "Takes off all connections of a port; of a path those inside a compound too.");
    document.def("reroute", guarded(reroute), py::arg("source"), py::arg("to"), py::kw_only(),
                 py::arg("inside") = false,
                 "Moves the connections of a port to another one: of two sources, or of two "
                 "targets, in one compound. With inside, the inner port of a compound is meant.");
    document.def("insert", guarded(insert), py::arg("node"), py::arg("source"), py::arg("target"),
                 "Puts a node into a connection: the source then feeds its first free input that "
                 "takes it, and its first output that fits feeds the target.");
}

} // namespace zelshading
