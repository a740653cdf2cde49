// SPDX-License-Identifier: MIT
#include "settings/settingsview.h"

#include "platform/desktop/symbols.h"
#include "settings/bindings.h"
#include "settings/predicatelibrary.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

QString withoutMnemonic(QString title)
{
    return title.remove(u'&');
}

QLineEdit* newField(int width, UserDefaults& defaults, const preferences::TextKey& preference)
{
    auto* field = new QLineEdit;
    field->setObjectName(preference.key);
    field->setFixedWidth(width);
    bind(field, defaults, preference);
    return field;
}

QCheckBox*
newSwitch(const QString& title, UserDefaults& defaults, const preferences::SwitchKey& preference)
{
    auto* control = new QCheckBox(title);
    control->setObjectName(preference.key);
    control->setAccessibleName(withoutMnemonic(title));
    bind(control, defaults, preference);
    return control;
}

void addField(QFormLayout* form, const QString& title, QLineEdit* field)
{
    field->setAccessibleName(withoutMnemonic(title));
    form->addRow(title, field);
}

/// Adds a control with its own label, aligned with the fields.
void addControl(QFormLayout* form, QWidget* control)
{
    form->setWidget(form->rowCount(), QFormLayout::FieldRole, control);
}

void endGroup(QFormLayout* form)
{
    form->addItem(new QSpacerItem(0, 12));
}

} // namespace

GenTab::GenTab(UserDefaults& defaults, QWidget* parent) : QWidget(parent)
{
    setMinimumSize(600, 320);
    auto* form = new QFormLayout(this);
    form->setFormAlignment(Qt::AlignCenter);
    form->setLabelAlignment(Qt::AlignRight);
    form->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);

    addField(form, tr("&Text"), newField(400, defaults, preferences::predicate));
    endGroup(form);
    addField(form, tr("&Period (seconds)"), newField(200, defaults, preferences::period));
    addField(form, tr("&Max entries"), newField(150, defaults, preferences::maxCount));
    endGroup(form);
    addControl(form, newSwitch(tr("&Full Fields"), defaults, preferences::fullMode));
    addControl(form, newSwitch(tr("&Show Signposts"), defaults, preferences::showSignposts));
    auto* reset = new QPushButton(tr("&Reset Predicates"));
    reset->setObjectName(QStringLiteral("resetPredicates"));
    reset->setToolTip(tr("Replace the predicate library with the default one"));
    connect(reset, &QPushButton::clicked, this, [&defaults] { resetPredicateLibrary(defaults); });
    addControl(form, reset);
    endGroup(form);
    addControl(form, newSwitch(tr("&Light Mode"), defaults, preferences::lightMode));
}

PredTab::PredTab(UserDefaults& defaults, PredicateCheck check, QWidget* parent) : QWidget(parent)
{
    setMinimumSize(600, 320);

    auto* predicateName = new QLineEdit;
    predicateName->setObjectName(u"predicateName"_s);
    predicateName->setAccessibleName(tr("New name"));
    predicateName->setFixedWidth(250);

    auto* predicateText = new PredicateEditor(std::move(check));
    predicateText->setObjectName(u"predicateText"_s);
    predicateText->setAccessibleName(tr("Predicate"));
    bind(predicateText->document(), defaults, preferences::predicateText);

    auto* append = new QPushButton(tr("&Append"));
    append->setObjectName(u"append"_s);
    append->setToolTip(tr("Add this predicate to the library under its name"));
    connect(append, &QPushButton::clicked, this, [&defaults, predicateName] {
        if (appendPredicate(defaults, predicateName->text()))
            predicateName->clear();
    });

    auto* form = new QWidget;
    auto* rows = new QFormLayout(form);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    rows->addRow(tr("&New name"), predicateName);
    rows->addRow(predicateText);
    rows->addRow(append);
    append->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);

    auto* column = new QVBoxLayout(this);
    column->addWidget(form, 0, Qt::AlignCenter);
}

SettingsView::SettingsView(UserDefaults& defaults, PredicateCheck check, QWidget* parent)
    : QTabWidget(parent)
{
    setObjectName(u"settings"_s);
    setWindowTitle(tr("Settings"));
    addTab(new GenTab(defaults), symbolIcon(u"gear"_s), tr("General"));
    addTab(new PredTab(defaults, std::move(check)),
           symbolIcon(u"line.3.horizontal.decrease.circle"_s), tr("Predicate"));
    setMinimumSize(minimumSizeHint()); // that of the tabs with the tab bar
}
