# How gdb shows the objects of libZEL. gdb loads this file together with libZEL.so when it stands
# beside it under the name that gdb expects (docs/debugging.md).
#
# Everything is read from memory: no function of the program is called, so a dump of a crashed
# program is shown like a live one. What cannot be read becomes a short text in angle brackets.
import gdb
import gdb.printing

NO_DEBUG_INFO = "<no debug information of libZEL>"
DEEPEST = 100  # Levels of a path: more mean a circle or wrong memory.
LONGEST = 200  # Characters of a name that are shown.
PARENT_IS_NODE = 1
PARENT_IS_COMPOUND = 2


class Unreadable(Exception):
    """The memory does not hold what it should."""


def quoted(text):
    return '"' + text + '"'


def counted(number, word):
    return f"{number} {word}{'' if number == 1 else 's'}"


def pointer_at(value, number=0):
    """The plain pointer that stands at the place of a value, or a number of words behind it."""
    target = gdb.lookup_type("void").pointer()
    return (value.address.cast(target.pointer()) + number).dereference()


def string_of(text):
    """The content of a std::string of libstdc++, in one line. Its fields are not always described."""
    if "std::__1" in str(text.type):
        raise Unreadable("texts of another standard library")
    start = pointer_at(text).cast(gdb.lookup_type("char").pointer())
    length = int(pointer_at(text, 1))
    if length > 1 << 30:
        raise Unreadable("a name of %d bytes" % length)
    content = start.string("utf-8", "replace", length=min(length, LONGEST))
    content = "".join(char if char.isprintable() else repr(char)[1:-1] for char in content)
    return content + ("..." if length > LONGEST else "")


def elements_of(vector):
    """The elements of a std::vector, which is three pointers."""
    for field in vector.type.strip_typedefs().fields():
        if field.is_base_class and field.name.startswith("std::__cxx1998::vector<"):
            vector = vector.cast(field.type)  # _GLIBCXX_DEBUG: what it checks stands before them.
    kind = vector.type.strip_typedefs().template_argument(0)
    start, end = pointer_at(vector), pointer_at(vector, 1)
    count = (int(end) - int(start)) // kind.sizeof
    if count < 0 or count > 1 << 28:
        raise Unreadable("a list of %d entries" % count)
    start = start.cast(kind.pointer())
    return count, ((start + i).dereference() for i in range(count))


def library_class(name):
    kind = gdb.lookup_type("ZEL::" + name)
    if not kind.fields():
        raise gdb.error(NO_DEBUG_INFO)
    return kind


def class_value(value, name):
    """The value as the class of that name, which is its own or a base."""
    own = library_class(name)
    return value.cast(own) if value.type.strip_typedefs().name != own.name else value


def place_of_base(kind, base):
    """Where the base of that name lies in the class, in bytes."""
    for field in kind.fields():
        if field.is_base_class and field.type.strip_typedefs().name == base:
            return field.bitpos // 8
    raise gdb.error(f"{kind.name} has no base {base}")


def derived(address, base, name):
    """The object of that class whose base lies at the address."""
    kind = library_class(name)
    start = int(address) - place_of_base(kind, "ZEL::" + base)
    return gdb.Value(start).cast(kind.pointer()).dereference()


def entries_of(word):
    """How many entries a sequence has, and the entries: the word of core/zelSequence.h."""
    data = int(word)
    if data == 0:
        return 0, []
    if data & 1:
        return 1, [data - 1]
    block = gdb.Value(data).cast(gdb.lookup_type("ZEL::SequenceBlock").pointer())
    used, capacity = int(block["used"]), int(block["capacity"])
    holes = 0
    if int(block["hasExtrasRoom"]):
        extras_type = gdb.lookup_type("ZEL::SequenceExtras").pointer()
        extras = (block.cast(extras_type.pointer()) - 1).dereference()
        holes = int(extras["holes"]) if int(extras) else 0
    if used > capacity or holes > used:
        raise Unreadable("a list of %d entries in %d slots" % (used, capacity))
    slots = (block + 1).cast(gdb.lookup_type("unsigned long").pointer())
    in_order = (int(slots[i]) for i in range(used))
    return used - holes, (entry for entry in in_order if entry)


def name_of(value):
    """The name that the object's Namable base holds."""
    return string_of(class_value(value, "Namable")["m_name"])


def owner_of(compound):
    """The pointer to the node that owns the compound."""
    return compound["m_owner"]


def node_path(node):
    names = []
    while True:
        names.append(name_of(node))
        if len(names) > DEEPEST:
            raise Unreadable("a path without an end")
        compound = node["m_parentCompound"]
        if int(compound) == 0:
            break
        owner = owner_of(compound.dereference())
        if int(owner) == 0:
            break
        node = owner.dereference()
    return ".".join(reversed(names))


def port_node(port):
    """The node that a port belongs to, None when it stands alone, and whether it is an inner port."""
    parent, kind = port["m_parent"], int(port["m_parentKind"])
    if int(parent) == 0:
        return None, False
    node = compound = None
    if kind == PARENT_IS_NODE:
        node = derived(parent, "PortNotification", "Node")
    elif kind == PARENT_IS_COMPOUND:
        compound = derived(parent, "PortNotification", "Compound")
    else:
        node, compound = dynamic(parent, "Node"), dynamic(parent, "Compound")
    if compound is not None:
        owner = owner_of(compound)
        node = owner.dereference() if int(owner) else None
    return node, compound is not None


def dynamic(parent, name):
    """The object behind a listener as that class, None when it is none or its class is not known."""
    try:
        found = parent.dynamic_cast(gdb.lookup_type("ZEL::" + name).pointer())
    except gdb.error:
        return None
    return found.dereference() if int(found) else None


def class_name(value, name):
    """The name of the object's class, also when the program derives it from the library's."""
    return readable(lambda: value.dynamic_type.name or name)


def list_size(value, member="m_entries"):
    return entries_of(value[member])[0]


# What the parts of the texts are made of. Each takes an object of the library's class.


def port_details(port):
    direction = "output" if int(port["m_ioType"]) == 1 else "input"
    if port_node(port)[1]:
        direction = "inner " + ("input" if direction == "output" else "output")
    data_type = port["m_dataType"]["m_object"]
    type_name = "type " + name_of(data_type.dereference()) if int(data_type) else "no type"
    connections = list_size(port["m_connections"])
    return f"{direction}, {type_name}, {counted(connections, 'connection')}"


def port_path(port):
    node = port_node(port)[0]
    return (node_path(node) + "." if node is not None else "") + name_of(port)


def node_details(node):
    lists = node["m_lists"].dereference()
    inputs, outputs = list_size(lists["m_inputs"]), list_size(lists["m_outputs"])
    type_name = string_of(node["m_nodeTypeName"])
    parts = [f"type {type_name}"] if type_name else []
    parts += [counted(inputs, "input"), counted(outputs, "output")]
    compound = node["m_ownedCompound"]["m_object"]
    if int(compound):
        nodes = compound["m_nodes"]["m_object"].dereference()
        parts.append("owns a compound of " + counted(list_size(nodes), "node"))
    return ", ".join(parts)


def port_text(value):
    port = class_value(value, "Port")
    return f"{class_name(value, 'Port')} {port_path(port)}: {port_details(port)}"


def node_text(value):
    node = class_value(value, "Node")
    return f"{class_name(value, 'Node')} {node_path(node)}: {node_details(node)}"


def compound_text(value):
    compound = class_value(value, "Compound")
    owner = owner_of(compound)
    nodes = compound["m_nodes"]["m_object"].dereference()
    whose = "of " + node_path(owner.dereference()) if int(owner) else "without an owner"
    return f"{class_name(value, 'Compound')} {whose}: {counted(list_size(nodes), 'node')}"


def port_list_text(value):
    port_list = class_value(value, "PortList")
    return f"ZEL::PortList of {counted(list_size(port_list), 'port')}"


def node_list_text(value):
    return f"ZEL::NodeList of {counted(list_size(class_value(value, 'NodeList')), 'node')}"


def property_list_text(value):
    impl = class_value(value, "PropertyList")["m_impl"].dereference()
    pairs, children = elements_of(impl["pairs"])[0], elements_of(impl["children"])[0]
    return f"ZEL::PropertyList of {counted(pairs, 'pair')} and {counted(children, 'child list')}"


def status_text(value):
    record = class_value(value, "StatusStr")["m_error"]
    if int(record) == 0 or not bool(record["isError"]):
        return "success"
    return "failure " + quoted(string_of(record["message"]))


def namable_text(value):
    return quoted(name_of(value))


def data_type_text(value):
    return f"{class_name(value, 'PortDataType')} {quoted(name_of(value))}"


def wrapper_text(value):
    pointer = value["m_object"]
    if int(pointer) == 0:
        return "empty"
    target = pointer.type.target().strip_typedefs()
    for name, _, text in CLASSES:
        if is_class(target, name):
            return readable(lambda: text(pointer.dereference()), int(pointer))
    if not target.fields():
        return NO_DEBUG_INFO
    return f"{target.name} at {int(pointer):#x}"


# What stands between the braces. Each gives pairs of a label and a text or a value.


def text_rows(entries, name, text):
    for index, entry in enumerate(entries):
        yield f"[{index}]", readable(lambda: text(derived(entry, "Namable", name)))


def port_list_rows(value):
    entries = entries_of(class_value(value, "PortList")["m_entries"])[1]
    return text_rows(entries, "Port", lambda port: f"{name_of(port)}: {port_details(port)}")


def node_list_rows(value):
    entries = entries_of(class_value(value, "NodeList")["m_entries"])[1]
    return text_rows(entries, "Node", lambda node: f"{name_of(node)}: {node_details(node)}")


def port_rows(value):
    """The ports at the other ends."""
    entries = entries_of(class_value(value, "Port")["m_connections"]["m_entries"])[1]
    return text_rows(entries, "Port", port_path)


def node_rows(value):
    lists = class_value(value, "Node")["m_lists"].dereference()
    yield "inputs", class_value(lists["m_inputs"], "PortList")
    yield "outputs", class_value(lists["m_outputs"], "PortList")


def compound_rows(value):
    compound = class_value(value, "Compound")
    for label, member in (("inner inputs", "m_innerInputs"), ("inner outputs", "m_innerOutputs")):
        yield label, compound[member]["m_object"].dereference()
    yield "nodes", compound["m_nodes"]["m_object"].dereference()


def property_list_rows(value):
    impl = class_value(value, "PropertyList")["m_impl"].dereference()
    for pair in elements_of(impl["pairs"])[1]:
        yield string_of(pair["first"]), quoted(string_of(pair["second"]))
    kind = class_value(value, "PropertyList").type.pointer()
    for child in elements_of(impl["children"])[1]:
        # A std::unique_ptr is one pointer.
        yield string_of(child["first"]), pointer_at(child["second"]).cast(kind).dereference()


def no_rows(_):
    return []


# The classes, derived ones before their bases.
CLASSES = [
    ("Port", port_rows, port_text),
    ("Node", node_rows, node_text),
    ("Compound", compound_rows, compound_text),
    ("PortList", port_list_rows, port_list_text),
    ("NodeList", node_list_rows, node_list_text),
    ("PortDataType", no_rows, data_type_text),
    ("PropertyList", property_list_rows, property_list_text),
    ("StatusStr", no_rows, status_text),
    ("Namable", no_rows, namable_text),
]


def is_class(kind, name):
    """True for the library's class of that name and for classes that the program derives from it."""
    if kind.name == "ZEL::" + name:
        return True
    if kind.code != gdb.TYPE_CODE_STRUCT:
        return False
    bases = (field.type.strip_typedefs() for field in kind.fields() if field.is_base_class)
    return any(is_class(base, name) for base in bases)


def has_debug_info():
    try:
        return bool(gdb.lookup_type("ZEL::SequenceBlock").fields())
    except gdb.error:
        return False


def readable(make, address=None):
    """What make returns, or a text in angle brackets that says why there is none."""
    try:
        return make()
    except gdb.MemoryError as error:
        where = f" at {address:#x}" if address is not None else ""
        return f"<no object{where}: {str(error)[:1].lower()}{str(error)[1:]}>"
    except Unreadable as error:
        return f"<no object: {error}>"
    except gdb.error as error:
        return f"<{error}>" if has_debug_info() else NO_DEBUG_INFO


class Printer:
    """Shows one value: a line, and rows behind it."""

    def __init__(self, value, text, rows=None):
        self.value = value
        self.text = text
        self.rows = rows

    def to_string(self):
        return readable(lambda: self.text(self.value))


class ListPrinter(Printer):
    def children(self):
        if self.to_string().startswith("<"):
            return
        rows = iter(self.rows(self.value))
        while True:
            row = readable(lambda: fetched(next(rows, None)))
            if row is None:
                return
            if isinstance(row, str):
                yield "rest", row
                return
            yield row


def fetched(row):
    """The row; its value is read now, so that it fails here if it must."""
    if row and isinstance(row[1], gdb.Value):
        row[1].fetch_lazy()
    return row


def find_printer(value):
    """The printer of a value of exactly one of the library's classes."""
    name = value.type.strip_typedefs().name or ""
    if name.startswith("ZEL::AddRefWrapper<"):
        return Printer(value, wrapper_text)
    for plain, rows, text in CLASSES:
        if name == "ZEL::" + plain:
            kind = Printer if rows is no_rows else ListPrinter
            return kind(value, text, rows)
    return None


class Collection(gdb.printing.PrettyPrinter):
    def __init__(self):
        super().__init__("libZEL")

    def __call__(self, value):
        return find_printer(value)


gdb.printing.register_pretty_printer(gdb.current_objfile(), Collection(), replace=True)
