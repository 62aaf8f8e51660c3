#include "window/canvas/canvasText.h"

#include <QPainter>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

namespace shading {

namespace {

constexpr double kShapedSize = 64; ///< Large: places are hardly rounded.
constexpr std::size_t kMostTexts = 20000;

int halvesOf(double size)
{
    return std::max(2, static_cast<int>(std::lround(size * 2)));
}

int lookOf(int halves, CanvasText::Weight weight)
{
    return 2 * halves + (weight == CanvasText::Weight::Bold ? 1 : 0);
}

} // namespace

QFont CanvasText::font(double size, Weight weight)
{
    QFont result;
    result.setFamilies({QStringLiteral("SF Mono"), QStringLiteral("DejaVu Sans Mono"),
                        QStringLiteral("Menlo"), QStringLiteral("Consolas"),
                        QStringLiteral("monospace")});
    result.setStyleHint(QFont::Monospace);
    result.setPixelSize(std::max(1, static_cast<int>(std::lround(size))));
    result.setHintingPreference(QFont::PreferNoHinting);
    result.setWeight(weight == Weight::Bold ? QFont::Bold : QFont::Normal);
    return result;
}

const CanvasText::Shaped& CanvasText::shaped(const QString& text, Weight weight)
{
    const Key key = {text, lookOf(0, weight)};
    const auto known = m_shaped.find(key);
    if (known != m_shaped.end())
        return known->second;
    if (m_shaped.size() > kMostTexts)
        m_shaped.clear();
    QTextLayout layout(text, font(kShapedSize, weight));
    layout.beginLayout();
    QTextLine line = layout.createLine();
    Shaped made;
    if (line.isValid()) {
        line.setLineWidth(1e6);
        line.setPosition({0, -line.ascent()}); // Places begin on the base line.
        made.width = line.naturalTextWidth();
    }
    layout.endLayout();
    for (const QGlyphRun& run : layout.glyphRuns())
        made.runs.push_back(run);
    return m_shaped[key] = std::move(made);
}

QRawFont CanvasText::rawFont(const QRawFont& base, int halves)
{
    if (halves != m_fontHalves || m_fonts.size() > 16) {
        m_fonts.clear();
        m_fontHalves = halves;
    }
    for (const auto& [shapedFont, fittedFont] : m_fonts) {
        if (shapedFont == base)
            return fittedFont;
    }
    QRawFont made = base;
    made.setPixelSize(halves / 2.0);
    m_fonts.emplace_back(base, made);
    return made;
}

const std::vector<QGlyphRun>& CanvasText::fitted(const QString& text, Weight weight, int halves)
{
    const Key key = {text, lookOf(halves, weight)};
    const auto known = m_fitted.find(key);
    if (known != m_fitted.end())
        return known->second;
    if (m_fitted.size() > kMostTexts)
        m_fitted.clear();
    const double scale = halves / 2.0 / kShapedSize;
    std::vector<QGlyphRun> runs = shaped(text, weight).runs;
    for (QGlyphRun& run : runs) {
        QList<QPointF> places = run.positions();
        for (QPointF& place : places)
            place *= scale;
        run.setPositions(places);
        run.setRawFont(rawFont(run.rawFont(), halves));
    }
    return m_fitted[key] = std::move(runs);
}

double CanvasText::width(const QString& text, Weight weight, double size)
{
    return shaped(text, weight).width * size / kShapedSize;
}

void CanvasText::draw(QPainter& painter,
                      const QPointF& place,
                      const QString& text,
                      Weight weight,
                      double size,
                      double most)
{
    if (text.isEmpty())
        return;
    const double all = most > 0 ? width(text, weight, size) : 0;
    if (all > most && most > 0) {
        const auto kept = static_cast<int>(static_cast<double>(text.size()) * most / all) - 1;
        if (kept >= 2)
            draw(painter, place, text.left(kept) + QChar(0x2026), weight, size);
        return;
    }
    for (const QGlyphRun& run : fitted(text, weight, halvesOf(size)))
        painter.drawGlyphRun(place, run);
}

} // namespace shading
