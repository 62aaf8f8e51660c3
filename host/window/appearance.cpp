#include "window/appearance.h"

#include <QApplication>
#include <QPalette>
#include <QSettings>
#include <QStyle>

namespace shading {

namespace {

const char* const kSetting = "theme";

struct WidgetColours {
    const char* window;
    const char* base;
    const char* alternate;
    const char* button;
    const char* text;
    const char* dim;
    const char* highlight;
    const char* highlighted;
    const char* link;
};

constexpr WidgetColours kLight = {"#eef0f3", "#ffffff", "#f4f6f9", "#e6e9ee", "#1c2430",
                                  "#8a93a1", "#2f6fbf", "#ffffff", "#1f5fae"};
constexpr WidgetColours kDark = {"#2a2d33", "#1f2226", "#25282d", "#363a41", "#e4e7ec",
                                 "#858c98", "#4d8fdc", "#0f1114", "#8ab8ef"};

QPalette paletteOf(const WidgetColours& colours)
{
    QPalette palette;
    const auto set = [&](QPalette::ColorRole role, const char* colour) {
        palette.setColor(role, QColor(colour));
    };
    set(QPalette::Window, colours.window);
    set(QPalette::WindowText, colours.text);
    set(QPalette::Base, colours.base);
    set(QPalette::AlternateBase, colours.alternate);
    set(QPalette::ToolTipBase, colours.base);
    set(QPalette::ToolTipText, colours.text);
    set(QPalette::Text, colours.text);
    set(QPalette::PlaceholderText, colours.dim);
    set(QPalette::Button, colours.button);
    set(QPalette::ButtonText, colours.text);
    set(QPalette::Highlight, colours.highlight);
    set(QPalette::HighlightedText, colours.highlighted);
    set(QPalette::Link, colours.link);
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(colours.dim));
    return palette;
}

} // namespace

ThemeChoice themeNamed(const QString& name)
{
    if (name == "light")
        return ThemeChoice::Light;
    return name == "dark" ? ThemeChoice::Dark : ThemeChoice::System;
}

ThemeChoice chosenTheme()
{
    return themeNamed(QSettings().value(kSetting).toString());
}

void chooseTheme(ThemeChoice choice)
{
    const char* const names[] = {"system", "light", "dark"};
    QSettings().setValue(kSetting, names[static_cast<int>(choice)]);
    applyTheme(choice);
}

void applyTheme(ThemeChoice choice)
{
    if (choice == ThemeChoice::System)
        QApplication::setPalette(QPalette());
    else
        QApplication::setPalette(paletteOf(choice == ThemeChoice::Dark ? kDark : kLight));
}

} // namespace shading
