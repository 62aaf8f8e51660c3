#pragma once

#include <QColor>
#include <QFont>
#include <QGlyphRun>
#include <QPointF>
#include <QRawFont>
#include <QString>
#include <unordered_map>
#include <vector>

class QPainter;

namespace shading {

/// Draws texts of which the same ones are drawn again and again: each is shaped once, and fitted
/// once for a size. Sizes go in steps of half a pixel. The number of texts that are kept is
/// bounded.
class CanvasText {
public:
    enum class Weight { Normal, Bold };

    /// Draws the text from the place on, which is on its base line; in an image without a scale of
    /// its own. No more is drawn than fits into the width, with a sign for what is left out; 0:
    /// all.
    void draw(QPainter& painter,
              const QPointF& place,
              const QString& text,
              Weight weight,
              double size,
              double most = 0);
    /// How wide it would be.
    double width(const QString& text, Weight weight, double size);

    /// The font of all canvases, of a size in pixels.
    static QFont font(double size, Weight weight = Weight::Normal);

private:
    /// At the size for which texts are shaped.
    struct Shaped {
        std::vector<QGlyphRun> runs;
        double width = 0;
    };
    struct Key {
        QString text;
        int look; ///< The size in half pixels, and the weight.

        bool operator==(const Key& other) const { return look == other.look && text == other.text; }
    };
    struct HashOfKey {
        std::size_t operator()(const Key& key) const
        {
            return qHash(key.text, static_cast<std::size_t>(key.look));
        }
    };

    const Shaped& shaped(const QString& text, Weight weight);
    const std::vector<QGlyphRun>& fitted(const QString& text, Weight weight, int halves);
    QRawFont rawFont(const QRawFont& base, int halves);

    std::unordered_map<Key, Shaped, HashOfKey> m_shaped;
    std::unordered_map<Key, std::vector<QGlyphRun>, HashOfKey> m_fitted;
    std::vector<std::pair<QRawFont, QRawFont>> m_fonts; ///< As shaped and as fitted.
    int m_fontHalves = 0;                               ///< The size of the fonts, in half pixels.
};

} // namespace shading
