#include "saving/elementsCase.h"

#include <gtest/gtest.h>

namespace {

TEST(SaveReferences, KeepTheirFormAndSayNoMoreThanTheyMust)
{
    checkElements({
        {"a reference keeps its form",
         "<nodegraph name='g'><output name='o' type='t'/><output name='p' type='t'/></nodegraph>"
         "<output name='a' type='t' nodename='g' output='o'/><output name='b' type='t' "
         "nodename='g'/>"
         "<output name='c' type='t' nodegraph='g' output='p'/><n name='n' type='t'><input name='i' "
         "type='t' nodename='g' output='p'/><input name='j' type='t' nodegraph='g'/></n><output "
         "name='d' type='t' nodename='n' output='out'/>",
         "rename Top.g h\nport rename Top.h p q\nrename Top.n m",
         "<nodegraph name='h'><output name='o' type='t'/><output name='q' type='t'/></nodegraph>"
         "<output name='a' type='t' nodename='h' output='o'/><output name='b' type='t' "
         "nodename='h'/>"
         "<output name='c' type='t' nodegraph='h' output='q'/><n name='m' type='t'><input name='i' "
         "type='t' nodename='h' output='q'/><input name='j' type='t' nodegraph='h'/></n><output "
         "name='d' type='t' nodename='m' output='out'/>"},
        {"a new reference names an output only where there are several",
         "<nodegraph name='g'><output name='o' type='t'/></nodegraph><nodegraph name='h'><output "
         "name='o' type='t'/><output name='p' type='t'/></nodegraph><n name='n' type='t'><input "
         "name='i' type='t' value='1'/><input name='j' type='t' value='1'/></n><output name='a' "
         "type='t'/><output name='b' type='t'/><nodegraph name='k'><output name='c' type='t'/>"
         "</nodegraph>",
         "connect Top.g.o Top.n.i\nconnect Top.h.o Top.n.j\nconnect Top.g.o Top.a\nconnect Top.h.p "
         "Top.b\nconnect Top.h.o Top.k.c",
         "<nodegraph name='g'><output name='o' type='t'/></nodegraph><nodegraph name='h'><output "
         "name='o' type='t'/><output name='p' type='t'/></nodegraph><n name='n' type='t'><input "
         "name='i' type='t' nodegraph='g'/><input name='j' type='t' nodegraph='h' output='o'/></n>"
         "<output name='a' type='t' nodename='g'/><output name='b' type='t' nodename='h' "
         "output='p'/>"
         "<nodegraph name='k'><output name='c' type='t' nodegraph='h'/></nodegraph>"},
        {"an output of the document is named as long as it has the source",
         "<n name='a' type='t'/><n name='b' type='t'/><output name='o' type='t' "
         "nodename='a'/><output "
         "name='p' type='t' nodename='a'/><n name='c' type='t'><input name='i' type='t' "
         "output='o'/><input name='j' type='t' output='p'/><input name='k' type='t' "
         "output='p'/></n>",
         "port rename Top o q\nconnect Top.b.out Top.p\ndisconnect-all Top.c.k",
         "<n name='a' type='t'/><n name='b' type='t'/><output name='q' type='t' "
         "nodename='a'/><output "
         "name='p' type='t' nodename='b'/><n name='c' type='t'><input name='i' type='t' "
         "output='q'/><input name='j' type='t' nodename='a'/></n>"},
        {"an output of the document that goes leaves its source",
         "<nodegraph name='g'><output name='x' type='t'/></nodegraph><output name='o' type='t' "
         "nodename='g'/><n name='c' type='t'><input name='i' type='t' output='o'/></n><nodegraph "
         "name='h'><n name='d' type='t'><input name='i' type='t' output='o'/></n></nodegraph>",
         "port delete Top o",
         "<nodegraph name='g'><output name='x' type='t'/></nodegraph><n name='c' type='t'><input "
         "name='i' type='t' nodegraph='g'/></n><nodegraph name='h'><n name='d' type='t'><input "
         "name='i' type='t' nodegraph='g'/></n></nodegraph>"},
    });
}

TEST(SaveReferences, ThatTheFormatHasNotAreNotMade)
{
    const std::string elements =
        "<nodegraph name='g'><input name='x' type='t'/><output name='o' type='t'/><output name='p' "
        "type='t'/></nodegraph><nodegraph name='h'><output name='q' type='t'/></nodegraph>";
    checkElements({
        {"straight through", elements, "connect Top.g.x Top.g.o",
         "error: connect: Top.g.x: the format leads no input of a graph straight to an output\n"},
        {"a second output from within a graph", elements, "connect Top.g.p Top.h.q",
         "error: connect: Top.g.p: Top.h.q can have the first output of that graph only\n"},
    });
}

} // namespace
