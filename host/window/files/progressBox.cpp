#include "window/files/progressBox.h"

#include <QCoreApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>
#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace shading {

namespace {

// In milliseconds.
constexpr int kSilence = 300;
constexpr int kInterval = 30;
constexpr int kHandling = 20;

int& workCount()
{
    static int count = 0;
    return count;
}

/// The key Escape and the button in its frame mean the button Cancel.
class ProgressDialog : public QDialog {
public:
    ProgressDialog(QWidget* parent, std::function<void()> cancel)
        : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint),
          m_cancel(std::move(cancel))
    {
    }
    void reject() override { m_cancel(); }

private:
    std::function<void()> m_cancel;
};

} // namespace

ProgressBox::ProgressBox(QWidget& window, QString title, Kind kind)
    : m_window(window),
      m_title(std::move(title)),
      m_kind(kind)
{
    ++workCount();
    m_begun.start();
    m_handled.start();
}

ProgressBox::~ProgressBox()
{
    --workCount();
    delete m_dialog;
}

Progress::Tell ProgressBox::tell()
{
    return [this](int permille) { return note(permille); };
}

/// The C library puts small pieces of memory aside when they are freed, and joins them all at once
/// some time later: after a large document that takes tenths of a second.
void ProgressBox::prepare()
{
#ifdef __GLIBC__
    mallopt(M_MXFAST, 0);
#endif
}

bool ProgressBox::isBusy()
{
    return workCount() > 0;
}

bool ProgressBox::note(int permille)
{
    if (m_handled.elapsed() < kInterval)
        return !m_isCancelled;
    if (!m_dialog && m_begun.elapsed() >= kSilence)
        show();
    if (m_bar)
        m_bar->setValue(permille);
    // Behind a dialog the window takes no input; without one the input waits for the end.
    QCoreApplication::processEvents(
        m_dialog ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents, kHandling);
    m_handled.restart();
    return !m_isCancelled;
}

void ProgressBox::show()
{
    const auto cancel = [this] { m_isCancelled = m_kind == Kind::Cancellable; };
    m_dialog = new ProgressDialog(&m_window, cancel);
    m_dialog->setObjectName("progress");
    m_dialog->setWindowModality(Qt::ApplicationModal);
    m_dialog->setWindowTitle(m_title);
    auto* const layout = new QVBoxLayout(m_dialog);
    layout->addWidget(new QLabel(m_title, m_dialog));
    m_bar = new QProgressBar(m_dialog);
    m_bar->setRange(0, 1000);
    m_bar->setMinimumWidth(360);
    m_bar->setAccessibleName(m_title);
    layout->addWidget(m_bar);
    if (m_kind == Kind::Cancellable) {
        auto* const button = new QPushButton(QObject::tr("Cancel"), m_dialog);
        button->setObjectName("cancel");
        QObject::connect(button, &QPushButton::clicked, m_dialog, &QDialog::reject);
        layout->addWidget(button, 0, Qt::AlignRight);
    }
    m_dialog->show();
}

} // namespace shading
