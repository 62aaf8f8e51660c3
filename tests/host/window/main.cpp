// Tests without a screen: platform, style, font, pixel ratio and settings are the same everywhere.

#include <gtest/gtest.h>

#include <QApplication>
#include <QFont>
#include <QSettings>
#include <QTemporaryDir>
#include <cstdio>

// What the font library keeps to the end.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libfontconfig\n";
}

namespace {

/// What the platform without a screen says that it cannot do says nothing about the program.
void tell(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& text)
{
    if (!text.contains("propagateSizeHints"))
        std::fprintf(stderr, "%s\n", qPrintable(text));
}

} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    qInstallMessageHandler(tell);
    const QTemporaryDir home;
    for (const char* const name :
         {"HOME", "XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"})
        qputenv(name, home.path().toLocal8Bit());
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_SCALE_FACTOR", "1");
    QApplication application(argc, argv);
    QApplication::setStyle("Fusion");
    QApplication::setFont(QFont("DejaVu Sans", 9));
    QApplication::setOrganizationName("zeledit");
    QApplication::setApplicationName("zeledit");
    return RUN_ALL_TESTS();
}
