#pragma once

#include <QImage>
#include <QRectF>
#include <QWidget>

namespace shading {

class Canvas;

/// The whole compound in a corner of its canvas, with a frame around what the canvas shows: a press
/// and a drag go there. Whether there is one, all canvases have in common, and the settings keep.
class Minimap : public QWidget {
    Q_OBJECT

public:
    /// Lies on the canvas, which owns it.
    explicit Minimap(Canvas& canvas);

    static bool isWanted();
    /// Keeps the choice; each minimap follows when it is told to, or its canvas comes into sight.
    static void setWanted(bool isWanted);
    void follow();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    void forget();
    void place();
    void draw();
    void goTo(const QPointF& pixel);

    Canvas& m_canvas;
    QImage m_picture; ///< Null: the scene has changed since.
    QRectF m_area;    ///< Of the scene: what the picture shows.
    double m_scale = 1;
};

} // namespace shading
