#include "window/docks/tryEdit.h"

#include "window/workspace/workspace.h"

namespace shading {

QString tryEdit(Workspace& workspace, const std::function<bool()>& run)
{
    QString problem;
    const auto connection = QObject::connect(
        &workspace, &Workspace::refused, &workspace,
        [&problem](const QString& /*subject*/, const QString& reason) { problem = reason; });
    const bool isDone = run();
    QObject::disconnect(connection);
    if (isDone)
        return QString();
    return problem.isEmpty() ? QStringLiteral("refused") : problem;
}

} // namespace shading
