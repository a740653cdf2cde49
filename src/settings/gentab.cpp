// SPDX-License-Identifier: MIT
#include "settings/gentab.h"

#include "settings/bindings.h"
#include "settings/predicatelibrary.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>

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

/// Adds a control that says by itself what it is, in line with the fields.
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
