set pagination off
set print pretty off
set print address off
python
class ShowIt(gdb.Command):
    """Shows an expression in one line; gdb's own message when it has no value."""

    def __init__(self):
        super().__init__("show-it", gdb.COMMAND_DATA)

    def invoke(self, expression, from_tty):
        try:
            shown = gdb.execute("output " + expression, to_string=True)
        except gdb.error as error:
            shown = str(error)
        print("show:", expression, "is", shown)


ShowIt()
end
break lookHere
run
up
show-it top
show-it *top.m_object
show-it network
show-it *network.m_object
show-it network.m_object->m_nodes
show-it blur
show-it *blur.m_object
show-it in
show-it *in.m_object
show-it *inner.m_object
show-it alone
show-it many
show-it (ZEL::PortList&)many.m_object->m_lists->m_inputs
show-it (ZEL::PortList&)emptied.m_object->m_lists->m_inputs
show-it image
show-it *image.m_object
show-it properties
show-it path
show-it lines
show-it good
show-it bad
show-it none
show-it *lost
show-it *rubbish
show-it *rubbishNode
show-it *rubbishList
kill
