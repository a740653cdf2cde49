// SPDX-License-Identifier: MIT
#include "settings/gentab.h"

#include "settings/bindings.h"
#include "settings/predicatelibrary.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

QFormLayout* addGroup(QVBoxLayout* column)
{
    auto* form = new QFormLayout;
    form->setFormAlignment(Qt::AlignHCenter | Qt::AlignTop);
    form->setLabelAlignment(Qt::AlignRight);
    form->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    column->addLayout(form);
    return form;
}

void addField(QFormLayout* form,
              const QString& title,
              int width,
              UserDefaults& defaults,
              const preferences::TextKey& preference)
{
    auto* field = new QLineEdit;
    field->setObjectName(preference.key);
    field->setAccessibleName(title);
    field->setFixedWidth(width);
    bind(field, defaults, preference);
    form->addRow(title, field);
}

QCheckBox*
newSwitch(const QString& title, UserDefaults& defaults, const preferences::SwitchKey& preference)
{
    auto* control = new QCheckBox(title);
    control->setObjectName(preference.key);
    control->setAccessibleName(title);
    bind(control, defaults, preference);
    return control;
}

} // namespace

GenTab::GenTab(UserDefaults& defaults, QWidget* parent) : QWidget(parent)
{
    setMinimumSize(600, 320);
    auto* column = new QVBoxLayout(this);
    column->setSpacing(column->spacing() * 3);
    column->addStretch();

    addField(addGroup(column), tr("Text"), 400, defaults, preferences::predicate);

    QFormLayout* limits = addGroup(column);
    addField(limits, tr("Period (seconds)"), 200, defaults, preferences::period);
    addField(limits, tr("Max entries"), 150, defaults, preferences::maxCount);

    QFormLayout* choices = addGroup(column);
    choices->addRow(newSwitch(tr("Full Fields"), defaults, preferences::fullMode));
    choices->addRow(newSwitch(tr("Show Signposts"), defaults, preferences::showSignposts));
    auto* reset = new QPushButton(tr("Reset Predicates"));
    reset->setObjectName(QStringLiteral("resetPredicates"));
    reset->setToolTip(tr("Replace the predicate library with the default one"));
    connect(reset, &QPushButton::clicked, this, [&defaults] { resetPredicateLibrary(defaults); });
    choices->addRow(reset);

    column->addWidget(newSwitch(tr("Light Mode"), defaults, preferences::lightMode), 0,
                      Qt::AlignHCenter);
    column->addStretch();
}
