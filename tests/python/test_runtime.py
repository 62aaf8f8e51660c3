"""Runtimes made in Python, and the containers registered with them."""

import gc
import weakref

import pytest

import zel


class Document(zel.Container):
    def __init__(self, runtime=None, rebuild=None):
        super().__init__()
        self.runtime, self.rebuild = runtime, rebuild

    def getRootNode(self):
        return None

    def getRuntime(self):
        return self.runtime

    def rebuildCompounds(self):
        if self.rebuild:
            self.rebuild(self)


def test_data_types_are_found_by_number_and_name():
    runtime = zel.Runtime()
    runtime.setName("mine")
    image = runtime.createPortDataType("image")
    assert runtime.createPortDataType("image") is image
    runtime.createPortDataType(None)
    assert runtime.getNumberOfPortDataTypes() == 2
    assert runtime.getPortDataType(0) is image and runtime.getPortDataType("image") is image
    assert runtime.getPortDataType(2) is None and runtime.getPortDataType(-1) is None
    assert runtime.getPortDataType("") is runtime.getPortDataType(None) is runtime.getPortDataType(1)
    assert runtime.getPortDataType("none") is None
    with pytest.raises(TypeError):
        runtime.getPortDataType(1.5)


def test_overrides_answer_the_base_and_both_ways_of_asking():
    asked = []

    class Mine(zel.Runtime):
        def __init__(self):
            super().__init__()
            self.answer = 1

        def getNumberOfPortDataTypes(self):
            return self.answer

        def getPortDataType(self, which):
            asked.append(which)
            return super().getPortDataType(which)

        def getNodeLibrary(self):
            return self.library

    runtime = Mine()
    made = zel.Runtime.createPortDataType(runtime, "a")
    zel.Runtime.createPortDataType(runtime, "b")
    assert asked == ["a", "b"] and made.getName() == "a"
    assert runtime.getPortDataType(1) is None  # The base asks how many there are.
    runtime.answer = 7
    assert runtime.getPortDataType(1).getName() == "b" and runtime.getPortDataType(6) is None
    for wrong in (None, True, "2"):
        runtime.answer = wrong
        with pytest.raises(TypeError, match="getNumberOfPortDataTypes must answer an int"):
            zel.Runtime.getPortDataType(runtime, 0)
    runtime.library = zel.NodeLibrary("root")
    assert runtime.findLibrary("root") is runtime.library
    runtime.library = "no library"
    with pytest.raises(TypeError):
        runtime.findLibrary("root")
    runtime.library = None
    assert runtime.findLibrary("root") is None


def test_a_rebuild_reaches_each_document_that_is_registered():
    rebuilt = []
    runtime = zel.Runtime()
    documents = [Document(rebuild=rebuilt.append) for _ in range(4)]
    for document in documents:
        runtime.registerContainer(document)
        runtime.registerContainer(document)
    runtime.unregisterContainer(documents[2])
    dropped = documents.pop()
    del dropped, document
    runtime.forceRebuildCompounds()
    assert sorted(map(id, rebuilt)) == sorted(map(id, documents[:2]))
    for nothing in (None, runtime):
        with pytest.raises(TypeError):
            runtime.registerContainer(nothing)


def test_documents_come_and_go_in_a_rebuild():
    runtime, kept, raised = zel.Runtime(), [], []

    def rebuild(document):
        for change in (runtime.registerContainer, runtime.unregisterContainer):
            try:
                change(document)
            except RuntimeError as error:
                raised.append(str(error))
        kept.clear()
        gc.collect()
        kept.append(Document())
        runtime.registerContainer(kept[0])

    kept.extend(Document(rebuild=rebuild) for _ in range(5))
    for document in kept:
        runtime.registerContainer(document)
    gone = weakref.ref(document)
    del document
    runtime.forceRebuildCompounds()
    assert len(raised) == 10 and "being rebuilt" in raised[0]
    assert gone() is None  # Held until the walk was over, and no longer.


def test_errors_of_a_rebuild_are_raised_when_all_are_done():
    runtime, done = zel.Runtime(), []

    def rebuild(document):
        done.append(document)
        if len(done) == 1:
            raise LookupError("first")

    documents = [Document(rebuild=rebuild) for _ in range(3)]
    for document in documents:
        runtime.registerContainer(document)
    with pytest.raises(LookupError):
        runtime.forceRebuildCompounds()
    assert len(done) == 3


def test_a_registered_document_holds_its_runtime_and_both_are_collected():
    runtime = zel.Runtime()
    document = Document()
    runtime.registerContainer(document)
    gone = weakref.ref(document)

    class Mine(zel.Runtime):
        pass

    own = Mine()
    own.documents = [Document(own), document]
    own.registerContainer(own.documents[0])
    own.registerContainer(document)
    ends = [weakref.ref(own), weakref.ref(own.documents[0])]
    del runtime, document, own
    gc.collect()
    assert gone() is None and [end() for end in ends] == [None, None]
