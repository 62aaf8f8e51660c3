"""The interpreter ends with objects left everywhere: nothing is said, and it ends well."""

import os
import subprocess
import sys

import pytest

START = """
import atexit, builtins, gc, sys, threading, weakref
import zel

class Document(zel.Container):
    def __init__(self):
        super().__init__()
        self.root = Noise(self, "Top")
        self.top = Inside(self.root)
        for i in range(5):
            self.top.nodes().add(Noise(self, str(i)))
    def getRootNode(self):
        return self.root
    def rebuildCompounds(self):
        raise LookupError

class Noise(zel.Node):
    def onPortSetName(self, port, name):
        return True

class Inside(zel.Compound):
    def onNodeRemove(self, node):
        return True

class Ending:
    def __init__(self, document):
        self.document = document
        self.port = document.root.inputs().addPort("p")
    def __del__(self):
        self.port.setName("q")
        self.document.root.setName("r")
        self.document.top.removeNode("1")
"""

# What is left, as the rest of the program.
ENDS = {
    "globals": "a = Document(); b = a.top.nodes()['2']; c = a.top.nodes()\n"
               "d = b.inputs().addPort('p')",
    "uuid": "a = Document(); zel.Container.registerWithUUID('u', a)",
    "uuid in a cycle": "a = Document(); a.a = a; zel.Container.registerWithUUID('u', a); del a",
    "cycle": "a = Document(); a.top.itself = a; a.top.nodes()['0'].document = a; "
             "del a; gc.disable()",
    "modules": "sys.held = Document(); builtins.held = sys.held.top\n"
               "gc.held = zel.held = sys.held.root",
    "atexit": "a = Document(); atexit.register(lambda: a.top.removeNode('1'))",
    "finalizers": "a = Document(); a.root.ending = Ending(a); b = Ending(a)",
    "weak references": "a = Document()\n"
                       "b = [weakref.ref(n, lambda r: None) for n in a.top.nodes()]",
    "connected": "a, b = zel.Port('a', 1), zel.Port('b', 0); a.addConnection(b); c = Document(); "
                 "c.root.inputs().addPort('p').addConnection(a)",
    "in a question": "class K(zel.Node):\n  def onPortSetName(self, *args): raise SystemExit(0)\n"
                     "a = K(None, 'n'); p = a.inputs().addPort('p')\n"
                     "b = Document(); p.setName('q')",
    "thread": "a = Document()\n"
              "t = threading.Thread(target=lambda: a.top.nodes()['3'].setName('x')); t.start()",
    "runtime": "class R(zel.Runtime):\n  pass\n"
               "r = R(); a = Document(); r.registerContainer(a); a.runtime = r",
    "editor": "e = zel.HostEditor(); a = Document(); a.root.registerEditor(e); a.root.editor = e",
    "generator": "def g(a):\n  try:\n    yield a.top\n  finally:\n    a.root.setName('x')\n"
                 "h = g(Document()); next(h)",
}


@pytest.mark.parametrize("end", ENDS.values(), ids=ENDS)
def test_the_end(end):
    run = subprocess.run([sys.executable, "-c", START + end], env=dict(os.environ),
                         capture_output=True, text=True)
    assert (run.returncode, run.stderr, run.stdout) == (0, "", "")
