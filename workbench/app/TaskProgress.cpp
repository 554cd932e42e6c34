#include "TaskProgress.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QLabel>
#include <QProgressBar>
#include <QProgressDialog>

namespace {

/// Fine enough for a bar of any width.
constexpr int Steps = 1000;
/// Work that ends sooner shows nothing.
constexpr int Moment = 600;
constexpr int BoxWidth = 440;
constexpr int Margins = 40;

QLabel *plainLabel(const QString &text)
{
    auto *label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    label->setWordWrap(true);
    return label;
}

} // namespace

TaskProgress::TaskProgress(QWidget *window) : m_window(window) {}

TaskProgress::~TaskProgress()
{
    end();
}

void TaskProgress::begin(const QString &text)
{
    auto *dialog = new QProgressDialog(m_window);
    dialog->setWindowTitle(QGuiApplication::applicationDisplayName());
    // A file's name may have no place to break it at.
    dialog->setLabel(plainLabel(dialog->fontMetrics().elidedText(text, Qt::ElideMiddle, BoxWidth - Margins)));
    dialog->setAccessibleName(text);
    auto *bar = new QProgressBar;
    bar->setAccessibleName(tr("Progress"));
    dialog->setBar(bar);
    dialog->setRange(0, Steps);
    dialog->setWindowModality(Qt::ApplicationModal);
    dialog->setMinimumDuration(Moment);
    dialog->setAutoClose(false);
    dialog->setAutoReset(false);
    dialog->setMinimumWidth(BoxWidth);
    dialog->setValue(0);
    m_dialog = dialog;
    m_begun.start();
}

bool TaskProgress::advance(double share)
{
    // A shown modal box runs the event loop here, so that it may even be gone afterwards.
    const int value = int(share * Steps);
    if (m_dialog && m_dialog->value() != value) {
        m_dialog->setValue(value);
    } else if (m_dialog) {
        standStill();
    }
    return m_dialog && !m_dialog->wasCanceled();
}

/// Qt's box does nothing where the value is the one that it has: work that stands still is to be seen, and ended, too.
void TaskProgress::standStill()
{
    if (!m_dialog->isVisible() && m_begun.hasExpired(Moment)) {
        QMetaObject::invokeMethod(m_dialog.data(), "forceShow");
    }
    if (m_dialog->isVisible()) {
        QCoreApplication::processEvents();
    }
}

void TaskProgress::end()
{
    delete m_dialog.data();
}
