#pragma once

#include "saving/save.h"

#include <QFrame>
#include <vector>

namespace shading {

class Workspace;

/// Why a document was not saved: each path with its reason, above the canvas. A click on one leads
/// there.
class ProblemsBar : public QFrame {
    Q_OBJECT

public:
    /// The workspace is not owned and must outlive the bar.
    ProblemsBar(Workspace& workspace,
                const std::vector<SaveProblem>& problems,
                QWidget* parent = nullptr);
};

} // namespace shading
