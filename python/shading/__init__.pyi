"""The sample host's shading documents: open, edit, check, draw and save them."""

import os
from collections.abc import Callable, Iterable, Iterator, Sequence
from types import TracebackType
from typing import Any, Literal, NamedTuple, NoReturn, TypeVar, final, overload

import zel

# The name of a file.
_File = str | bytes | os.PathLike[str] | os.PathLike[bytes]
# A node or a compound of the document: its path, or the object.
_Node = str | zel.Node | zel.Compound
# One or several.
_Nodes = _Node | Iterable[_Node]
# A port: its path, or the object.
_Port = str | zel.Port
_Place = tuple[float, float]
_Watcher = TypeVar("_Watcher", bound=Callable[[Change], object])

# What a port's value is in Python. Vectors, colours, matrices (row by row) and arrays are tuples.
_Value = float | int | bool | str | tuple[float, ...] | tuple[int, ...] | tuple[str, ...]

def open(
    path: _File,
    libraries: Sequence[_File] = ...,
    plugin: bool | _File = True,
    strict: bool = False,
) -> Document:
    """Opens the document in that file.

    Libraries are files with more data types and definitions, for the documents that are opened with
    them. The plugin is the standard one, none for False, or that of a path; a process has one. With
    strict, a document with warnings does not open.

    Raises OSError for a file that cannot be read, and zel.Error for what is no document.
    """

def new(
    path: _File | None = None, libraries: Sequence[_File] = ..., plugin: bool | _File = True
) -> Document:
    """An empty document, to be saved into that file.

    Raises FileExistsError when the file is there.
    """

class Connection(NamedTuple):
    """The paths of the two ends."""

    source: str
    target: str

class Finding(NamedTuple):
    """What a check found, and where."""

    path: str
    reason: str

class Stats(NamedTuple):
    """Counts of what is in a compound, at all levels; bytes are those of the file when opened."""

    nodes: int
    compounds: int
    depth: int
    ports: int
    connections: int
    bytes: int

class NodeInfo(NamedTuple):
    """A node in a list."""

    name: str
    type: str
    isCompound: bool

class PortInfo(NamedTuple):
    """A port in a list; sources and targets are paths, also those inside a compound."""

    isInput: bool
    name: str
    type: str
    value: str
    sources: list[str]
    targets: list[str]

class BackdropInfo(NamedTuple):
    """A frame around nodes: its place as x, y, width, height, or None."""

    name: str
    frame: tuple[float, float, float, float] | None
    nodes: list[zel.Node]
    text: str

class DefinitionInfo(NamedTuple):
    """A definition of nodes, with the data types of its ports by their names."""

    name: str
    nodeType: str
    version: str
    inputs: dict[str, str]
    outputs: dict[str, str]

class HistoryEntry(NamedTuple):
    """An edit, and lines of the shell that do the same."""

    title: str
    commands: list[str]
    isUndone: bool

@final
class Message(metaclass=zel._Type):
    """What is wrong with a document, and where. Its text is that of the shell."""

    def __init__(self, *args: NoReturn, **kwargs: NoReturn) -> None: ...
    @property
    def file(self) -> str:
        """The path."""
    @property
    def line(self) -> int:
        """From 1."""
    @property
    def column(self) -> int:
        """From 1, in characters."""
    @property
    def isError(self) -> bool:
        """False for a warning."""
    @property
    def text(self) -> str:
        """One line."""

@final
class Change(metaclass=zel._Type):
    """What an edit changed when it was done, undone or redone: each thing once, as it is then."""

    def __init__(self, *args: NoReturn, **kwargs: NoReturn) -> None: ...
    @property
    def kind(self) -> Literal["done", "gone on", "undone", "redone", "outside"]:
        """"gone on" for more of the last edit; "outside" when the document was changed past its
        edits, which forgets them: then nothing is named."""
    @property
    def title(self) -> str:
        """The title of the edit; empty for a change outside."""
    @property
    def commands(self) -> list[str]:
        """Lines of the shell that do the same."""
    @property
    def added(self) -> list[zel.Node]:
        """Nodes that are new in the network."""
    @property
    def removed(self) -> list[zel.Node]:
        """Nodes that are in it no more."""
    @property
    def changed(self) -> list[zel.Node]:
        """Nodes with another name, place, definition, port, value or connection."""
    @property
    def compounds(self) -> list[zel.Compound]:
        """Compounds where any of this shows; also those that are gone."""

@final
class Edit(metaclass=zel._Type):
    """Several edits as one, for `with`; see Document.edit."""

    def __init__(self, *args: NoReturn, **kwargs: NoReturn) -> None: ...
    def __enter__(self) -> Edit: ...
    def __exit__(
        self,
        type: type[BaseException] | None,
        value: BaseException | None,
        trace: TracebackType | None,
    ) -> Literal[False]: ...

@final
class Walk(metaclass=zel._Type):
    """The nodes of Document.walk."""

    def __init__(self, *args: NoReturn, **kwargs: NoReturn) -> None: ...
    def __iter__(self) -> Walk: ...
    def __next__(self) -> zel.Node: ...

@final
class Document(metaclass=zel._Type):
    """A shading document with its edits and its file: open() and new() give one.

    The edits bear the names of the shell's commands. They take paths or objects, and raise
    zel.Error, with the path and the reason, when they are refused: nothing changed then.

    The document lives as long as this object or any object of its network does.
    """

    def __init__(self, *args: NoReturn, **kwargs: NoReturn) -> None: ...

    # What it has.
    @property
    def root(self) -> zel.Node:
        """The node Top, which has the whole network in its compound."""
    @property
    def path(self) -> str | None:
        """The file that it was opened from or last saved into; None for one that has no file."""
    @property
    def messages(self) -> list[Message]:
        """What was said when it was opened."""
    def walk(self, path: _Node | None = None) -> Iterator[zel.Node]:
        """Every node below the root, or below the compound at the path, outer ones first.

        The document may be edited meanwhile: nodes that leave it are passed over, and new ones do
        not come.
        """
    def node(self, path: _Node) -> zel.Node:
        """The node at the path."""
    def compound(self, path: _Node) -> zel.Compound:
        """The compound of the node at the path."""
    def port(self, path: str, direction: Literal["input", "output"] = "input") -> zel.Port:
        """The port of a node at the path."""
    def connections(self, path: _Node | None = None) -> list[Connection]:
        """The connections in a compound and below, sorted.

        A source in brackets is one that the document names and the network does not show.
        """
    def stats(self, path: _Node | None = None) -> Stats:
        """Counts what is in a compound, at all levels."""
    def check(self, *, notes: bool = False) -> list[Finding]:
        """What is wrong with the document; empty for a sound one.

        Broken connections and circles, what a save would refuse, and the rules of the format that
        the file would break. With notes also what is to be known and is no fault.
        """
    def ls(self, path: _Node | None = None) -> list[NodeInfo]:
        """The nodes inside a compound."""
    def ports(self, path: _Node) -> list[PortInfo]:
        """The ports of a node."""
    def tree(self, path: _Node | None = None) -> str:
        """A node and everything below it, a line each."""
    def types(self) -> list[str]:
        """The names of the data types."""
    def definitions(self, nodeType: str) -> list[DefinitionInfo]:
        """The definitions of a node type, by name: what create takes."""
    def library(self, name: str | None = None) -> str:
        """The tree of node libraries, or one of them with its definitions, as text."""

    # Nodes and compounds.
    def create(
        self,
        nodeType: str,
        name: str,
        path: _Node | None = None,
        *,
        type: str | None = None,
    ) -> zel.Node:
        """Makes a node inside the compound at the path, the root without one, and gives it.

        The node type is the name of a definition (ND_add_color3), a node type (add), or nodegraph
        for an empty graph. Of several definitions it takes one that makes the data type, or without
        that a float, else the first by name.
        """
    def rename(self, path: _Node, name: str) -> None:
        """Gives a node another name: letters, digits and _, and no digit first."""
    def delete(self, nodes: _Nodes, *, heal: bool = False) -> None:
        """Deletes nodes with their connections.

        With heal, where one of them has one input fed and one output feeding something, the source
        of the one feeds the targets of the other, if the types fit.
        """
    def collapse(self, path: _Node, name: str, nodes: _Nodes) -> zel.Node:
        """Moves nodes of the compound, given by their names, into a new one, and gives that.

        Its name and those of its ports are made unique.
        """
    def expand(self, path: _Node) -> list[tuple[str, str]]:
        """Moves the nodes of a compound up and removes it.

        Gives the old and the new path of each node that got another name.
        """
    def reparent(self, path: _Node, nodes: _Nodes) -> list[zel.Node]:
        """Moves nodes of one compound into that one, and gives them.

        Their connections lead the same way, through ports of the compounds between.
        """
    def copy(self, nodes: _Nodes) -> str:
        """Gives nodes, all of one compound, as a document of the format on one line."""
    def paste(
        self,
        path: _Node | None = None,
        text: str | None = None,
        *,
        inner: bool = False,
        at: _Place | None = None,
        middle: _Place | None = None,
    ) -> list[zel.Node]:
        """Makes the nodes of a text of the format in the compound, and gives them.

        Without a text those that were copied last. With inner they are connected among themselves
        only. Their upper left corner comes to at, or their middle to middle.
        """
    def duplicate(
        self,
        nodes: _Nodes,
        *,
        inner: bool = False,
        at: _Place | None = None,
        middle: _Place | None = None,
    ) -> list[zel.Node]:
        """Copies nodes and pastes them beside themselves. What was copied before stays."""
    @overload
    def move(self, path: _Node, x: float, y: float) -> None:
        """Changes where a node is drawn: its attributes xpos and ypos."""
    @overload
    def move(self, places: Sequence[tuple[_Node, float, float]]) -> None:
        """Several at once."""
    def arrange(self, path: _Node | None = None, nodes: _Nodes | None = None) -> None:
        """Gives nodes of the compound places in layers along their connections, as draw does."""
    def rebuild(self) -> None:
        """Brings all nodes of the document up to their definitions."""

    # Connections.
    def connect(self, source: _Port, target: _Port) -> None:
        """Connects an output to an input, in either order.

        Where both orders make sense, the first is the source. A source that the input has is
        replaced.
        """
    def disconnect(self, source: _Port, target: _Port) -> None:
        """Takes a connection off, given in either order."""
    def disconnectAll(self, port: _Port) -> None:
        """Takes off all connections of a port; of a path those inside a compound too."""
    def reroute(self, source: _Port, to: _Port, *, inside: bool = False) -> None:
        """Moves the connections of a port to another one: of two sources, or of two targets.

        Both lie in one compound. With inside, the inner port of a compound is meant.
        """
    def insert(self, node: _Node, source: _Port, target: _Port) -> None:
        """Puts a node into a connection.

        The source then feeds its first free input that takes it, and its first output that fits
        feeds the target.
        """

    # Ports of compounds: by the compound and the port's name, or the port.
    def portAdd(
        self,
        path: _Node,
        direction: Literal["input", "output"] | zel.PortIOType,
        name: str,
        type: str,
    ) -> None:
        """Adds a port to a compound."""
    @overload
    def portDelete(self, path: _Node, name: str) -> None:
        """Deletes a port of a compound. What it fed gets its value."""
    @overload
    def portDelete(self, port: zel.Port) -> None: ...
    @overload
    def portRename(self, path: _Node, name: str, newName: str) -> None:
        """Gives a port of a compound a name."""
    @overload
    def portRename(self, port: zel.Port, newName: str) -> None: ...
    @overload
    def portMove(self, path: _Node, name: str, place: int) -> None:
        """Gives a port of a compound a place, from 1, among its inputs or outputs."""
    @overload
    def portMove(self, port: zel.Port, place: int) -> None: ...
    @overload
    def portType(self, path: _Node, name: str, type: str) -> None:
        """Gives a port of a compound another data type, when what it is connected to has that."""
    @overload
    def portType(self, port: zel.Port, type: str) -> None: ...

    # Values, and what the network does not show.
    def set(self, path: _Port, value: Any) -> None:
        """Gives an input a value of its type: float, int, bool, str, or a tuple of those.

        A str is the text of the document, whatever the type; None gives the input the value of its
        definition, or none. It counts where nothing feeds the input.
        """
    def value(self, path: _Port) -> _Value | None:
        """The value of an input as a value of its type; None for no value.

        A text that the type does not know, as documents may have, is str.
        """
    @overload
    def attribute(self, path: _Node | zel.Port) -> dict[str, str]:
        """What the network does not show of a node, a port, the document, or an element like a look
        (Top.LOOK), by the names of the attributes."""
    @overload
    def attribute(self, path: _Node | zel.Port, name: str) -> str:
        """That attribute."""
    @overload
    def attribute(self, path: _Node | zel.Port, name: str, value: str) -> None:
        """Changes the attribute; an empty value takes it off."""

    # Frames around nodes.
    def backdropAdd(
        self,
        path: _Node,
        name: str,
        nodes: _Nodes = ...,
        *,
        frame: tuple[float, float, float, float] | None = None,
        text: str = "",
    ) -> None:
        """Makes a frame around nodes of the compound, given by their names.

        It is around their places, or at x, y, width, height.
        """
    def backdropNodes(self, path: _Node, name: str, nodes: _Nodes) -> None:
        """Gives a backdrop other nodes: those that it contains from then on."""
    def backdropFrame(
        self, path: _Node, name: str, x: float, y: float, width: float, height: float
    ) -> None:
        """Moves and resizes a backdrop alone."""
    def backdropMove(self, path: _Node, name: str, x: float, y: float) -> None:
        """Moves a backdrop with the nodes that it contains."""
    def backdropText(self, path: _Node, name: str, text: str) -> None:
        """Changes what a backdrop says to people."""
    def backdropRename(self, path: _Node, name: str, newName: str) -> None:
        """Gives a backdrop another name."""
    def backdropDelete(self, path: _Node, name: str) -> None:
        """Deletes a backdrop."""
    def backdropList(self, path: _Node | None = None) -> list[BackdropInfo]:
        """The backdrops of the compound."""

    # The history.
    def edit(self, title: str) -> Edit:
        """Several edits as one: `with doc.edit("title"):`.

        An exception takes back what was done in it. Edits may lie in edits, and the inner one
        becomes a part of the outer.
        """
    def undo(self, count: int = 1) -> list[str]:
        """Takes the last edits back, and gives their titles."""
    def redo(self, count: int = 1) -> list[str]:
        """Does undone edits again, and gives their titles."""
    def undoCount(self) -> int:
        """How many edits can be taken back."""
    def redoCount(self) -> int:
        """How many undone edits can be done again."""
    def history(self) -> list[HistoryEntry]:
        """All edits, the oldest first."""
    def isModified(self) -> bool:
        """False when the document is as it was opened, made or last saved."""
    def watch(self, function: _Watcher) -> _Watcher:
        """Calls the function with a Change after each edit, undo and redo, until unwatch.

        Gives the function. What one raises is raised by the edit, which is done; one that raises
        does not stop the others.
        """
    def unwatch(self, function: Callable[[Change], object]) -> None:
        """The function watches no more. Raises ValueError when it did not."""

    # Files and pictures.
    def save(
        self, path: _File | None = None, *, force: bool = False, dryRun: bool = False
    ) -> None:
        """Writes the document into a file, which is its own from then on.

        The file is replaced when all is written. One that somebody changed since it was read or
        saved last stays, unless forced. With dryRun it writes nothing, and raises what the save
        would.

        Raises OSError where the file cannot be written, and zel.Error for what the format cannot
        say.
        """
    def draw(
        self, file: _File, path: _Node | None = None, *, depth: int = 0, all: bool = False
    ) -> None:
        """Draws a compound, the root without a path, into a file whose name ends in .svg.

        With depth, compounds in it are open frames, so many levels down; with all, inputs are drawn
        that say no more than the node's definition.
        """
    def svg(self, path: _Node | None = None, *, depth: int = 0, all: bool = False) -> str:
        """The same picture as the text of an SVG file."""
    def _repr_svg_(self) -> str | None: ...
