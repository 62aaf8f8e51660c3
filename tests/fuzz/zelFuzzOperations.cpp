// Any sequence of public operations and commands, with listeners that refuse and re-enter.

#include "zelFuzzPort.h"
#include "zelFuzzUniverse.h"

// NOLINTNEXTLINE(readability-identifier-naming): the name that a fuzzer calls.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    zelFuzz::Input input(data, size);
    {
        zelFuzz::Universe universe(input);
        universe.run();
    }
    zelFuzz::expect(zelFuzz::FuzzNode::live == 0, "a node lives on");
    zelFuzz::expect(zelFuzz::Hosted<ZEL::Compound>::live == 0, "a compound lives on");
    zelFuzz::expect(zelFuzz::Listener::live == 0, "a listener lives on");
    zelFuzz::expect(zelFuzz::FuzzEditor::live == 0, "an editor lives on");
    zelFuzz::expect(zelFuzz::FuzzPort::live == 0, "a port lives on");
    return 0;
}
