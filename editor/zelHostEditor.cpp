#include "zelEditorImpl.h"

namespace ZEL {

HostEditorImpl::HostEditorImpl(HostEditor* editor) : owner(editor) {}

HostEditorImpl::~HostEditorImpl()
{
    beingDestroyed = true;
    for (std::uint32_t slot = 0; slot < notifiers.slotCount(); ++slot) {
        if (HostEditorNotifier* const notifier = notifiers.at(slot))
            notifier->unregisterEditor(owner);
    }
}

std::uint32_t HostEditorImpl::addMe(HostEditorNotifier* notifier)
{
    return notifiers.append(notifier, [this](HostEditorNotifier& moved, std::uint32_t slot) {
        moved.m_impl->slots.change(owner, slot);
    });
}

void HostEditorImpl::removeMe(std::uint32_t slot)
{
    if (!beingDestroyed)
        notifiers.erase(slot);
}

HostEditor::HostEditor() : m_impl(new HostEditorImpl(this)) {}

HostEditor::~HostEditor()
{
    delete m_impl;
}

void HostEditor::zel_onConnectionChange(ECnxChangeType /*type*/,
                                        const AddRefWrapper<Port>& /*first*/,
                                        const AddRefWrapper<Port>& /*second*/)
{
}

void HostEditor::zel_onCompoundConnectionChange(ECnxChangeType /*type*/,
                                                const AddRefWrapper<Port>& /*first*/,
                                                const AddRefWrapper<Port>& /*second*/)
{
}

void HostEditor::zel_onCompoundPortChange(ECompoundPortChangeType /*type*/,
                                          const AddRefWrapper<Port>& /*port*/)
{
}

void HostEditor::zel_onNodeChange(ENodeChangeType /*type*/,
                                  const AddRefWrapper<Compound>& /*compound*/,
                                  const AddRefWrapper<Node>& /*node*/)
{
}

} // namespace ZEL
