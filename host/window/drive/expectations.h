#pragma once

#include <QString>
#include <QStringList>

namespace shading {

class MainWindow;

/// Asks what `expect` in a script expects: the words behind it. Empty when it holds; else "expected
/// ..., found ...".
QString askExpectation(MainWindow& window, const QStringList& words);

} // namespace shading
