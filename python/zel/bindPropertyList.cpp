#include "zel/classes.h"
#include "zel/propertyTree.h"

#include <memory>

namespace zelpython {

namespace {

using Tree = std::shared_ptr<PropertyTree>;

/// The index of the first child of that name; -1 when there is none.
int childNamed(ZEL::PropertyList& list, const ZEL::PropertyList* wanted)
{
    for (int i = 0; wanted && i < list.getNumberOfChildList(); ++i) {
        const char* name = nullptr;
        ZEL::PropertyList* child = nullptr;
        if (list.getChildListAt(i, &name, &child) && child == wanted)
            return i;
    }
    return -1;
}

template <class Class>
void definePairs(Class& list)
{
    list.def(
            "addStringPair",
            [](PropertyTree& self, const OptionalText& key, const OptionalText& value) {
                self.list().addStringPair(key, value);
            },
            py::arg("key").none(true), py::arg("value").none(true))
        .def(
            "getStringPairValue",
            [](PropertyTree& self, const OptionalText& key) {
                return optionalText(self.list().getStringPairValue(key));
            },
            py::arg("key").none(true))
        .def("getNumberOfPairs", [](PropertyTree& self) { return self.list().getNumberOfPairs(); })
        .def(
            "getStringPairAt",
            [](PropertyTree& self, int index) -> py::object {
                const char* key = nullptr;
                const char* value = nullptr;
                if (!self.list().getStringPairAt(index, &key, &value))
                    return py::none();
                return py::make_tuple(toPython(key), toPython(value));
            },
            py::arg("index"));
}

template <class Class>
void defineChildren(Class& list)
{
    list.def(
            "addChildList",
            [](PropertyTree& self, const OptionalText& name) {
                self.list().addChildList(name);
                return self.child(self.list().getNumberOfChildList() - 1);
            },
            py::arg("name").none(true))
        .def(
            "getChildList",
            [](PropertyTree& self, const OptionalText& name) -> Tree {
                ZEL::PropertyList& own = self.list();
                const int index = childNamed(own, own.getChildList(name));
                return index < 0 ? nullptr : self.child(index);
            },
            py::arg("name").none(true))
        .def("getNumberOfChildList",
             [](PropertyTree& self) { return self.list().getNumberOfChildList(); })
        .def(
            "getChildListAt",
            [](PropertyTree& self, int index) -> py::object {
                const char* name = nullptr;
                ZEL::PropertyList* child = nullptr;
                if (!self.list().getChildListAt(index, &name, &child))
                    return py::none();
                return py::make_tuple(toPython(name), self.child(index));
            },
            py::arg("index"));
}

} // namespace

void bindPropertyList(py::module_& module)
{
    using Class = py::class_<PropertyTree, Tree>;
    Binding<Class> list(module, "PropertyList", py::is_final());
    list.defInit([](py::detail::value_and_holder& place) { initialise(place, new PropertyTree); })
        .defInit([](py::detail::value_and_holder& place,
                    const PropertyTree& other) { initialise(place, new PropertyTree(other)); },
                 py::arg("other").none(false));
    definePairs(list);
    defineChildren(list);
    list.def("removeAll", &PropertyTree::removeAll);
}

} // namespace zelpython
