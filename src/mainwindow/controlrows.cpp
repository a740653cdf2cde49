// SPDX-License-Identifier: MIT
#include "mainwindow/controlrows.h"

#include "mainwindow/contentstate.h"
#include "mainwindow/fieldcolours.h"
#include "mainwindow/flowlayout.h"
#include "mainwindow/starteditor.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr int pieceSpacing = 12; ///< between controls that have nothing to do with each other
constexpr int labelSpacing = 6;  ///< between a label and its control
constexpr int lineSpacing = 6;

/// A control with its label before it, kept together when the row wraps.
QWidget* labelled(const QString& text, QWidget* control)
{
    auto* const pair = new QWidget;
    auto* const layout = new QHBoxLayout(pair);
    layout->setContentsMargins({});
    layout->setSpacing(labelSpacing);
    auto* const label = new QLabel(text);
    label->setBuddy(control);
    layout->addWidget(label);
    layout->addWidget(control);
    return pair;
}

void name(QWidget* control, const QString& objectName, const QString& accessibleName)
{
    control->setObjectName(objectName);
    control->setAccessibleName(accessibleName);
}

/// A field of a given width that edits a text of the state.
template <typename Property>
QLineEdit*
field(ContentState& state, Property ContentState::*text, void (ContentState::*changed)(), int width)
{
    auto* const edit = new QLineEdit;
    edit->setMaxLength(std::numeric_limits<int>::max()); // a longer text would be cut
    edit->setText((state.*text).value());
    edit->setFixedWidth(width);
    edit->setAcceptDrops(false); // the window opens a document that is dropped here
    QObject::connect(edit, &QLineEdit::textChanged, &state,
                     [&state, text](const QString& typed) { state.*text = typed; });
    QObject::connect(&state, changed, edit, [edit, &state, text] {
        if (edit->text() != (state.*text).value())
            edit->setText((state.*text).value());
    });
    return edit;
}

template <typename Property>
QCheckBox* toggle(const QString& title,
                  ContentState& state,
                  Property ContentState::*on,
                  void (ContentState::*changed)())
{
    auto* const box = new QCheckBox(title);
    box->setChecked((state.*on).value());
    QObject::connect(box, &QCheckBox::toggled, &state,
                     [&state, on](bool checked) { state.*on = checked; });
    QObject::connect(&state, changed, box,
                     [box, &state, on] { box->setChecked((state.*on).value()); });
    return box;
}

QWidget* row(std::initializer_list<QWidget*> controls)
{
    auto* const widget = new QWidget;
    auto* const layout = new FlowLayout(pieceSpacing, lineSpacing);
    layout->setContentsMargins({});
    widget->setLayout(layout);
    for (QWidget* control : controls)
        layout->addWidget(control);
    return widget;
}

} // namespace

ControlRows::ControlRows(ContentState& state, QWidget* parent) : QWidget(parent), m_state(state)
{
    auto* const layout = new QVBoxLayout(this);
    layout->setSpacing(lineSpacing);
    layout->addWidget(fetchRow());
    layout->addWidget(predicateRow());
}

QWidget* ControlRows::fetchRow()
{
    QLineEdit* const seconds =
        field(m_state, &ContentState::theSecs, &ContentState::theSecsChanged, 48);
    name(seconds, u"seconds"_s, tr("Seconds"));
    QLineEdit* const period =
        field(m_state, &ContentState::period, &ContentState::periodChanged, 200);
    name(period, u"period"_s, tr("Period (seconds)"));
    QLineEdit* const maximum =
        field(m_state, &ContentState::maxCount, &ContentState::maxCountChanged, 150);
    name(maximum, u"maxCount"_s, tr("Max entries"));
    QCheckBox* const signposts =
        toggle(tr("Show Si&gnposts"), m_state, &ContentState::showSignposts,
               &ContentState::showSignpostsChanged);
    name(signposts, u"showSignposts"_s, tr("Show Signposts"));
    QCheckBox* const full = toggle(tr("Full Fie&lds"), m_state, &ContentState::fullMode,
                                   &ContentState::fullModeChanged);
    name(full, u"fullMode"_s, tr("Full Fields"));

    return row({archiveLabel(), labelled(tr("&Start"), startEditor()), labelled(tr(":"), seconds),
                labelled(tr("&Period (seconds)"), period), labelled(tr("&Max entries"), maximum),
                signposts, full});
}

QWidget* ControlRows::predicateRow()
{
    auto* const set = new QPushButton(tr("Set"));
    name(set, u"setPredicate"_s, tr("Set predicate"));
    set->setToolTip(tr("Write the special predicate"));
    connect(set, &QPushButton::clicked, &m_state, &ContentState::setPredicate);

    QLineEdit* const predicate =
        field(m_state, &ContentState::predicate, &ContentState::predicateChanged, 300);
    name(predicate, u"predicate"_s, tr("Predicate text"));
    QLineEdit* const note =
        field(m_state, &ContentState::userNoteText, &ContentState::userNoteTextChanged, 300);
    name(note, u"note"_s, tr("Note"));

    return row({labelled(tr("P&redicate"), set), predicatePicker(), predicate, countLabel(),
                labelled(tr("&Note: "), note)});
}

QLabel* ControlRows::archiveLabel()
{
    auto* const label = new QLabel(tr("‼️ Logarchive"));
    name(label, u"usingArchive"_s, tr("Using a log archive"));
    const auto update = [this, label] {
        const Logger& logger = m_state.logger();
        label->setVisible(logger.usingArchive());
        label->setToolTip(logger.archURL() ? logger.archURL()->toLocalFile() : QString());
    };
    connect(&m_state.logger(), &Logger::usingArchiveChanged, label, update);
    connect(&m_state.logger(), &Logger::archURLChanged, label, update);
    update();
    m_archiveLabel = label;
    colourArchiveLabel();
    return label;
}

void ControlRows::colourArchiveLabel()
{
    QPalette colours;
    colours.setColor(QPalette::WindowText, FieldColours(palette())[FieldColour::Red]);
    m_archiveLabel->setPalette(colours);
}

void ControlRows::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        colourArchiveLabel();
}

QWidget* ControlRows::startEditor()
{
    auto* const start = new StartEditor(m_state.theStartDate);
    name(start, u"start"_s, tr("Start"));
    connect(start, &QDateTimeEdit::dateTimeChanged, &m_state,
            [this](const QDateTime& date) { m_state.theStartDate = date; });
    connect(&m_state, &ContentState::theStartDateChanged, start,
            [this, start] { start->setDateTime(m_state.theStartDate); });
    connect(start, &StartEditor::secondsPasted, &m_state,
            [this](const QString& seconds) { m_state.theSecs = seconds; });
    // Complete a half-typed start, so that the fetch uses what the field shows.
    connect(&m_state, &ContentState::fetchBegins, start, &QDateTimeEdit::interpretText);
    return start;
}

QWidget* ControlRows::predicatePicker()
{
    auto* const picker = new QComboBox;
    name(picker, u"predIndex"_s, tr("Predicate to use"));
    picker->setFixedWidth(200);
    const auto fill = [this, picker] {
        const QSignalBlocker quiet(picker);
        const QStringList names = m_state.predNames;
        picker->clear();
        for (qsizetype i = 0; i < m_state.predList.value().size(); ++i)
            picker->addItem(names.value(i));
        picker->setCurrentIndex(m_state.predIndex);
    };
    fill();
    connect(&m_state, &ContentState::predListChanged, picker, fill);
    connect(&m_state, &ContentState::predNamesChanged, picker, fill);
    connect(&m_state, &ContentState::predIndexChanged, picker,
            [this, picker] { picker->setCurrentIndex(m_state.predIndex); });
    connect(picker, &QComboBox::currentIndexChanged, &m_state,
            [this](int index) { m_state.predIndex = index; });
    return picker;
}

QLabel* ControlRows::countLabel()
{
    auto* const label = new QLabel(m_state.countText());
    name(label, u"count"_s, tr("Number of entries"));
    connect(&m_state, &ContentState::countTextChanged, label,
            [this, label] { label->setText(m_state.countText()); });
    return label;
}
