// SPDX-License-Identifier: MIT
#include "settings/predtab.h"

#include "settings/bindings.h"
#include "settings/predicatelibrary.h"

#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

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
