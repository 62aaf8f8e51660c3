#include "window/documentView.h"

#include "document/document.h"
#include "window/canvas/canvas.h"
#include "window/canvas/minimap.h"
#include "window/gestures/breadcrumb.h"
#include "window/gestures/gestures.h"
#include "window/workspace/actions.h"

#include <QVBoxLayout>

namespace shading {

DocumentView::DocumentView(std::unique_ptr<Workspace> workspace, Actions& actions, QWidget* parent)
    : QWidget(parent),
      m_workspace(std::move(workspace)),
      m_bars(new QVBoxLayout),
      m_canvas(new Canvas(this)),
      m_gestures(std::make_unique<Gestures>(*m_canvas, *m_workspace, m_memory, actions))
{
    m_canvas->setObjectName("canvas");
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(m_bars);
    layout->addWidget(new Breadcrumb(*m_workspace, this));
    layout->addWidget(m_canvas, 1);
    m_minimap = new Minimap(*m_canvas);
    actions.useIn(*m_canvas);
    setFocusProxy(m_canvas);
    connect(m_workspace.get(), &Workspace::compoundChanged, this, &DocumentView::showCompound);
    connect(m_workspace.get(), &Workspace::changed, this, &DocumentView::takeMarks);
    connect(m_workspace.get(), &Workspace::selectionChanged, this, &DocumentView::showSelection);
    connect(m_workspace.get(), &Workspace::revealed, this, [this] {
        m_canvas->frameSelection();
        m_canvas->flash(m_workspace->selection());
    });
    showCompound();
}

DocumentView::~DocumentView()
{
    takeWorkspace();
}

std::unique_ptr<Workspace> DocumentView::takeWorkspace()
{
    m_gestures.reset();
    qDeleteAll(findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly));
    m_memory.clear();
    return std::move(m_workspace);
}

void DocumentView::showAgain(const CanvasView& seen)
{
    m_memory.setView(m_workspace->compound(), {seen.scale(), seen.centre()});
    if (m_canvas->scene())
        m_canvas->setView(seen.scale(), seen.centre());
}

void DocumentView::addBar(QWidget* bar)
{
    m_bars->addWidget(bar);
}

void DocumentView::showCompound()
{
    m_canvas->showCompound(m_workspace->document(), m_workspace->compound(), m_memory);
    showSelection();
}

void DocumentView::takeMarks(const Marks& marks)
{
    for (const CompoundMarks& mark : marks) {
        if (mark.compound == m_workspace->compound())
            m_canvas->update(SceneMarks(mark));
    }
}

void DocumentView::showSelection()
{
    CanvasSelection selection = m_canvas->selection();
    selection.nodes = m_workspace->selection();
    m_canvas->setSelection(std::move(selection));
}

} // namespace shading
