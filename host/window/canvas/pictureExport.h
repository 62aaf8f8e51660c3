#pragma once

#include <QImage>
#include <QString>
#include <string>
#include <vector>

namespace shading {

class Canvas;
class Scene;

// Pictures of a scene for a file: of all of it, or of some boxes with what connects them.

/// As `draw` makes it, but with the places of the canvas. No boxes: all.
std::string sceneSvg(const Scene& scene, const std::vector<int>& boxes);
/// As the canvas paints it, so many pixels for one of the scene; fewer when it would be larger than
/// 16000 pixels. Null when there is no memory for it.
QImage sceneImage(const Scene& scene, const std::vector<int>& boxes, double scale, bool isDark);

/// Writes what the canvas shows into a file, whose name ends in .svg or .png. False with the
/// reason: the file is as it was.
bool exportPicture(const Canvas& canvas, bool onlySelection, const QString& file, QString& problem);

} // namespace shading
