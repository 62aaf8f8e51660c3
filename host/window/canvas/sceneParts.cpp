#include "window/canvas/sceneParts.h"

#include <algorithm>
#include <cmath>

namespace shading {

namespace {

constexpr double kLeastReach = 24;
constexpr int kDistanceSteps = 24;

/// How far the curve runs straight out of a port: less where the ends are near, more where it has
/// to come back.
double reachOf(const QPointF& from, const QPointF& to)
{
    const double way = to.x() - from.x();
    const double rise = std::abs(to.y() - from.y());
    if (way >= 0)
        return std::clamp(std::max(way / 2, std::min(rise / 3, way)), kLeastReach,
                          WireCurve::kMostReach);
    return std::clamp(kLeastReach - way / 2 + rise / 8, kLeastReach, WireCurve::kMostReach);
}

} // namespace

WireCurve::WireCurve(const QPointF& from, const QPointF& to)
{
    const double reach = reachOf(from, to);
    control = {from, {from.x() + reach, from.y()}, {to.x() - reach, to.y()}, to};
}

QPointF WireCurve::at(double part) const
{
    const double rest = 1 - part;
    return rest * rest * rest * control[0] + 3 * rest * rest * part * control[1] +
           3 * rest * part * part * control[2] + part * part * part * control[3];
}

QRectF WireCurve::bounds() const
{
    const auto [left, right] =
        std::minmax({control[0].x(), control[1].x(), control[2].x(), control[3].x()});
    const auto [top, bottom] = std::minmax({control[0].y(), control[3].y()});
    return {QPointF(left, top), QPointF(right, bottom)};
}

double WireCurve::distance(const QPointF& point, double* part) const
{
    double least = -1;
    QPointF last = control[0];
    for (int i = 1; i <= kDistanceSteps; ++i) {
        const QPointF next = at(static_cast<double>(i) / kDistanceSteps);
        const QPointF along = next - last;
        const double length = QPointF::dotProduct(along, along);
        const double share =
            length == 0 ? 0
                        : std::clamp(QPointF::dotProduct(point - last, along) / length, 0.0, 1.0);
        const QPointF off = point - (last + share * along);
        const double distance = std::hypot(off.x(), off.y());
        if (least < 0 || distance < least) {
            least = distance;
            if (part)
                *part = (i - 1 + share) / kDistanceSteps;
        }
        last = next;
    }
    return least;
}

} // namespace shading
