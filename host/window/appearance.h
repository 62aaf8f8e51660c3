#pragma once

#include <QString>

namespace shading {

enum class ThemeChoice { System, Light, Dark };

/// "light", "dark"; anything else is the system's.
ThemeChoice themeNamed(const QString& name);
/// That of the settings.
ThemeChoice chosenTheme();
/// Keeps the choice in the settings and applies it.
void chooseTheme(ThemeChoice choice);
/// Gives all widgets the colours; the canvas and the pictures follow the palette.
void applyTheme(ThemeChoice choice);

} // namespace shading
