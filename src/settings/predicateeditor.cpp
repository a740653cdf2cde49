// SPDX-License-Identifier: MIT
#include "settings/predicateeditor.h"

#include "platform/desktop/documenttext.h"
#include "settings/predicatelibrary.h"

#include <QEvent>
#include <QLabel>
#include <QStyle>
#include <QTextBlock>
#include <QTextDocument>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize editorSize{460, 200};
constexpr double extraLineSpacing = 5;

QColor mixed(const QColor& a, const QColor& b, double shareOfA)
{
    const auto mix = [shareOfA](float x, float y) {
        return static_cast<float>(x * shareOfA + y * (1 - shareOfA));
    };
    return QColor::fromRgbF(mix(a.redF(), b.redF()), mix(a.greenF(), b.greenF()),
                            mix(a.blueF(), b.blueF()));
}

/// Lines that are added later inherit the format.
void spaceLines(QTextDocument* document)
{
    const bool undo = document->isUndoRedoEnabled();
    document->setUndoRedoEnabled(false);
    QTextBlockFormat format;
    format.setLineHeight(extraLineSpacing, QTextBlockFormat::LineDistanceHeight);
    QTextCursor cursor(document);
    cursor.select(QTextCursor::Document);
    cursor.mergeBlockFormat(format);
    document->setUndoRedoEnabled(undo);
}

} // namespace

PredicateEditor::PredicateEditor(PredicateCheck check, QWidget* parent)
    : QTextEdit(parent)
    , m_check(std::move(check))
    , m_status(new QLabel(this))
{
    setFixedSize(editorSize);
    setAcceptRichText(false);
    setTabChangesFocus(true);
    spaceLines(document());

    m_status->setObjectName(u"predicateStatus"_s);
    m_status->setTextFormat(Qt::PlainText);
    m_status->setContentsMargins(4, 0, 4, 2);
    m_status->setAutoFillBackground(true);
    QFont smaller = font();
    smaller.setPointSizeF(fontInfo().pointSizeF() * 0.9);
    m_status->setFont(smaller);
    makeStatusQuiet();
    setViewportMargins(0, 0, 0, m_status->sizeHint().height());

    connect(document(), &QTextDocument::contentsChanged, this, &PredicateEditor::showStatus);
    showStatus();
}

void PredicateEditor::changeEvent(QEvent* event)
{
    QTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        makeStatusQuiet();
}

void PredicateEditor::resizeEvent(QResizeEvent* event)
{
    QTextEdit::resizeEvent(event);
    QRect area = contentsRect();
    area.setTop(viewport()->geometry().bottom() + 1);
    area.setRight(viewport()->geometry().right());
    m_status->setGeometry(area);
    showStatus();
}

void PredicateEditor::makeStatusQuiet()
{
    const QColor text = palette().color(QPalette::Text);
    const QColor base = palette().color(QPalette::Base);
    QPalette quiet = palette();
    quiet.setColor(QPalette::Window, base);
    quiet.setColor(QPalette::WindowText, mixed(text, base, 0.65));
    m_status->setPalette(quiet);
}

void PredicateEditor::showStatus()
{
    const QString predicate = exactText(document());
    QString status;
    if (!predicate.isEmpty())
        status = m_check(withPlainQuotes(predicate)).value_or(tr("This predicate is valid."));
    setAccessibleDescription(status);
    m_status->setText(m_status->fontMetrics().elidedText(status, Qt::ElideRight,
                                                         m_status->contentsRect().width()));
    m_status->setToolTip(status.isEmpty() ? status : Qt::convertFromPlainText(status));
}
