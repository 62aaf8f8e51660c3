#include "window/drive/target.h"

#include "window/canvas/canvas.h"
#include "window/documentView.h"
#include "window/mainWindow.h"

#include <QApplication>
#include <QKeySequence>
#include <optional>

namespace shading {

namespace {

constexpr int kSightMargin = 40; ///< Pixels around what is brought into sight.

class Finder {
public:
    Finder(Canvas& canvas, QString& problem) : m_canvas(canvas), m_problem(problem) {}

    bool find(const QString& kind, const QString& rest, QPoint& at)
    {
        if (kind == "empty")
            return findEmpty(at);
        if (kind == "at")
            return readPoint(rest, at);
        const std::optional<QPointF> point = pointOf(kind, rest);
        if (!point) {
            m_problem = m_problem.isEmpty() ? "it is not on the canvas" : m_problem;
            return false;
        }
        if (!m_canvas.rect().adjusted(5, 5, -5, -5).contains(m_canvas.toPixel(*point).toPoint())) {
            const double margin = kSightMargin / m_canvas.view().scale();
            m_canvas.reveal({point->x() - margin, point->y() - margin, 2 * margin, 2 * margin});
            settle();
        }
        at = m_canvas.toPixel(*point).toPoint();
        return true;
    }

private:
    std::optional<QPointF> pointOf(const QString& kind, const QString& rest)
    {
        const Scene& scene = *m_canvas.scene();
        if (kind == "wire") {
            const QStringList ends = rest.split("->");
            if (ends.size() == 2)
                return scene.wireMiddle(ends[0].trimmed().toStdString(),
                                        ends[1].trimmed().toStdString());
            m_problem = "not of the form wire:PATH->PATH";
            return std::nullopt;
        }
        QString path = rest;
        std::optional<bool> isInput;
        if (path.endsWith(":in") || path.endsWith(":out")) {
            isInput = path.endsWith(":in");
            path.truncate(path.lastIndexOf(':'));
        }
        const std::string text = path.toStdString();
        if (kind == "port")
            return scene.portCentre(text, isInput);
        if (kind == "bar")
            return scene.barCentre(text, isInput);
        if (kind == "node") {
            const std::optional<QRectF> rect = scene.nodeRect(text);
            // The header's left half: a compound has its badge at the right.
            return rect ? std::optional(rect->topLeft() + QPointF(rect->width() / 3, 12))
                        : std::nullopt;
        }
        m_problem = "no such kind of target";
        return std::nullopt;
    }

    bool readPoint(const QString& rest, QPoint& at)
    {
        const QStringList parts = rest.split(',');
        bool isX = false;
        bool isY = false;
        if (parts.size() == 2)
            at = {parts[0].toInt(&isX), parts[1].toInt(&isY)};
        m_problem = "not of the form at:X,Y";
        return isX && isY;
    }

    /// The free place that is nearest to the middle, with some room around it.
    bool findEmpty(QPoint& at)
    {
        constexpr int kStep = 20;
        const QPoint middle = m_canvas.rect().center();
        std::optional<QPoint> best;
        for (int y = kSightMargin; y < m_canvas.height() - kSightMargin; y += kStep) {
            for (int x = kSightMargin; x < m_canvas.width() - kSightMargin; x += kStep) {
                const QPoint point(x, y);
                const auto distance = [&](const QPoint& p) {
                    return (p - middle).manhattanLength();
                };
                if ((!best || distance(point) < distance(*best)) && isFree(point))
                    best = point;
            }
        }
        at = best.value_or(middle);
        m_problem = "no place of the canvas is free";
        return best.has_value();
    }

    bool isFree(const QPoint& point) const
    {
        const QPoint around[] = {{0, 0}, {12, 0}, {-12, 0}, {0, 12}, {0, -12}};
        for (const QPoint& step : around) {
            if (m_canvas.childAt(point + step) ||
                m_canvas.hitAt(point + step).kind != Hit::Kind::Empty)
                return false;
        }
        return true;
    }

    Canvas& m_canvas;
    QString& m_problem;
};

QWidget* namedWidget(const QString& name)
{
    for (QWidget* const widget : QApplication::allWidgets()) {
        if (widget->objectName() == name && widget->isVisible())
            return widget;
    }
    return nullptr;
}

} // namespace

bool findTarget(MainWindow& window, const QString& word, Target& target, QString& problem)
{
    const qsizetype colon = word.indexOf(':');
    const QString kind = colon < 0 ? word : word.left(colon);
    const QString rest = colon < 0 ? QString() : word.mid(colon + 1);
    if (kind == "widget") {
        target.widget = namedWidget(rest);
        if (!target.widget)
            problem = "no such widget is to be seen";
        else
            target.at = target.widget->rect().center();
        return target.widget;
    }
    auto* const canvas = window.view() ? window.view()->findChild<Canvas*>() : nullptr;
    if (!canvas || !canvas->scene()) {
        problem = "no document is shown";
        return false;
    }
    target.widget = canvas;
    return Finder(*canvas, problem).find(kind, rest, target.at);
}

bool readHeld(const QStringList& words, Held& held, QString& problem)
{
    for (const QString& word : words) {
        for (const QString& name : word.split('+')) {
            if (name == "Ctrl")
                held.modifiers |= Qt::ControlModifier;
            else if (name == "Shift")
                held.modifiers |= Qt::ShiftModifier;
            else if (name == "Alt")
                held.modifiers |= Qt::AltModifier;
            else if (const QKeySequence key(name);
                     key.count() == 1 && key[0].key() > 0 && key[0].key() != Qt::Key_unknown)
                held.key = key[0].key();
            else {
                problem = name + ": no modifier, and no key";
                return false;
            }
        }
    }
    return true;
}

} // namespace shading
