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

    auto* append = new QPushButton(tr("Append"));
    append->setObjectName(u"append"_s);
    append->setToolTip(tr("Add this predicate to the library under its name"));
    connect(append, &QPushButton::clicked, this, [&defaults, predicateName] {
        if (appendPredicate(defaults, predicateName->text()))
            predicateName->clear();
    });

    auto* nameRow = new QFormLayout;
    nameRow->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    nameRow->addRow(tr("New name"), predicateName);

    auto* form = new QVBoxLayout;
    form->addLayout(nameRow);
    form->addWidget(predicateText);
    form->addWidget(append, 0, Qt::AlignLeft);

    auto* column = new QVBoxLayout(this);
    column->addStretch();
    column->addLayout(form);
    column->setAlignment(form, Qt::AlignHCenter);
    column->addStretch();
}
