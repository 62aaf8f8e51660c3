#pragma once

#include "zel/classes.h"

#include <vector>

namespace zelpython {

/// True when the port stands in one of the four lists of its parent.
bool isListed(ZEL::Port& port);

/// The end of the question whether the port comes into that list of its parent. False when it was
/// refused, or a listener put it into another list meanwhile; one that is in no list then has no
/// parent and no connections.
bool comesIn(const ZEL::PortList& list,
             ZEL::Port& port,
             ZEL::PortNotification& parent,
             bool isAgreed);

/// The first index of the entry; -1 when it is not in the list.
inline int placeOf(ZEL::PortList& list, ZEL::Port& port)
{
    return list.findPort(&port);
}
int placeOf(ZEL::NodeList& list, const ZEL::Node& node);

/// The entry at the index, or of the name.
template <class Entry, class List>
ZEL::AddRefWrapper<Entry> entryAt(List& list, const py::object& key)
{
    Text name;
    if (toText(key, name)) {
        ZEL::AddRefWrapper<Entry> entry = list[static_cast<const char*>(name)];
        if (!entry)
            throw py::key_error(name.string());
        return entry;
    }
    if (!PyLong_Check(key.ptr()))
        throw py::type_error("an entry is found by its index or its name");
    Py_ssize_t place = PyNumber_AsSsize_t(key.ptr(), PyExc_IndexError);
    if (place == -1 && PyErr_Occurred())
        throw py::error_already_set();
    if (place < 0)
        place += list.size();
    if (place < 0 || place >= list.size())
        throw py::index_error("there is no entry at that index");
    return list[static_cast<int>(place)];
}

/// The list as Python reads one: len, indexes from both ends, names, membership, and a walk over
/// the entries as they are when it begins.
template <class Entry, class Class>
void defineList(Class& bound)
{
    using List = typename Class::T;
    using Wrapper = ZEL::AddRefWrapper<Entry>;
    bound
        .defInit([](py::detail::value_and_holder&) {
            throw py::type_error("a list is made by its node or compound");
        })
        .defCount()
        .def("size", &List::size)
        .def("__len__", &List::size)
        .def("__bool__", [](List& self) { return self.size() > 0; })
        // One operation for both: with two the search for the one that fits is half of a lookup.
        .def("__getitem__", entryAt<Entry, List>)
        .def(
            "get",
            [](List& self, const Text& name, const py::object& instead) -> py::object {
                const Wrapper entry = self[static_cast<const char*>(name)];
                return entry ? toObject(entry.get()) : instead;
            },
            py::arg("name"), py::arg("default") = py::none())
        .def("__contains__",
             [](List& self, const py::object& object) {
                 Text name;
                 if (toText(object, name))
                     return static_cast<bool>(self[static_cast<const char*>(name)]);
                 py::detail::type_caster_generic caster(typeOf<Entry>());
                 return !object.is_none() && caster.load(object, false) &&
                        placeOf(self, *static_cast<Entry*>(caster.value)) >= 0;
             })
        .def(
            "index",
            [](List& self, Entry& entry) {
                const int place = placeOf(self, entry);
                if (place < 0)
                    throw py::value_error("the list has no such entry");
                return place;
            },
            py::arg("entry").none(false))
        .def("__iter__",
             [](List& self) {
                 // What is made for Python may start a collection, which changes lists.
                 std::vector<Wrapper> entries;
                 for (Entry* const entry : self)
                     entries.emplace_back(entry);
                 py::list objects;
                 for (const Wrapper& entry : entries)
                     objects.append(toObject(entry.get()));
                 return py::reinterpret_steal<py::object>(PyObject_GetIter(objects.ptr()));
             })
        .def("__repr__", [](const py::object& self) {
            return py::str("<{}.{} of {}>")
                .format(py::type::of(self).attr("__module__"),
                        py::type::of(self).attr("__qualname__"), py::len(self));
        });
}

} // namespace zelpython
