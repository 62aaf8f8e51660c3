"""One thread at a time, and what another may do."""

import threading

import pytest
import zel
from network import compound, node


def in_thread(function):
    result = []

    def run():
        try:
            result.append(function())
        except BaseException as error:
            result.append(type(error))

    thread = threading.Thread(target=run)
    thread.start()
    thread.join()
    return result[0]


def test_another_thread_waits_its_turn():
    results = []

    class Kind(zel.Node):
        def onPortSetName(self, port, name):
            results.append(in_thread(lambda: port.getName()))
            results.append(in_thread(lambda: zel.Node(None, "x")))
            return True

    made = node(None, "n", "p", kind=Kind)
    made.inputs()["p"].setName("q")
    assert results == [RuntimeError, RuntimeError] and "q" in made.inputs()
    assert in_thread(lambda: made.inputs()["q"].getName()) == "q"
    assert in_thread(lambda: made.inputs()["q"].setName("r")) is None
    results.clear()


def test_another_thread_drops_what_it_holds():
    """The objects go in the middle of an operation; the operation goes on."""
    held = []

    class Kind(zel.Node):
        def onPortRemoveConnection(self, port, other):
            in_thread(held.clear)
            return True

    made = node(None, "n", "", "o", kind=Kind)
    for i in range(5):
        owner, top = compound("C")
        far = node(top, str(i), "i")
        assert made.outputs()["o"].addConnection(far.inputs()["i"])
        held.extend((owner, far))
    del owner, top, far
    made.outputs()["o"].removeAllConnections()
    assert held == [] and made.outputs()["o"].connectedTo() == ()


def test_errors_do_not_stay_behind():
    class Kind(zel.Node):
        def onPortSetName(self, port, name):
            raise KeyboardInterrupt

    made = node(None, "n", "p", kind=Kind)
    assert in_thread(lambda: made.inputs()["p"].setName("q")) is KeyboardInterrupt
    with pytest.raises(KeyboardInterrupt):
        made.inputs()["p"].setName("q")
    made.setName("m")
