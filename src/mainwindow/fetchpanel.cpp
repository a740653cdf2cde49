// SPDX-License-Identifier: MIT
#include "mainwindow/fetchpanel.h"

#include <QGuiApplication>
#include <QLocale>

namespace {

constexpr int steps = 1000;
constexpr int panelWidth = 340; ///< so that growing numbers do not move its edges

} // namespace

FetchPanel::FetchPanel(QWidget* window, std::chrono::milliseconds patience)
    : m_window(window)
    , m_patience(patience)
{
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    m_running.start();
}

FetchPanel::~FetchPanel()
{
    QGuiApplication::restoreOverrideCursor();
}

bool FetchPanel::update(const FetchProgress& progress)
{
    if (m_running.elapsed() < m_patience.count())
        return true;
    if (!m_dialog)
        show();
    m_dialog->setValue(static_cast<int>(progress.fraction * steps));
    m_dialog->setLabelText(
        tr("%1 entries found\n%2 entries read")
            .arg(QLocale().toString(progress.fetched), QLocale().toString(progress.entriesRead)));
    // The panel is modal: its button is all that takes the user's events.
    QCoreApplication::processEvents();
    return !m_dialog->wasCanceled();
}

void FetchPanel::show()
{
    m_dialog = std::make_unique<QProgressDialog>(m_window);
    m_dialog->setObjectName(QStringLiteral("fetchPanel"));
    m_dialog->setWindowTitle(tr("Reading the log"));
    m_dialog->setWindowModality(Qt::ApplicationModal);
    m_dialog->setCursor(Qt::ArrowCursor);
    m_dialog->setMinimumWidth(panelWidth);
    m_dialog->setRange(0, steps);
    m_dialog->setMinimumDuration(0);
    m_dialog->setAutoReset(false);
    m_dialog->setAutoClose(false);
    m_dialog->show();
}
