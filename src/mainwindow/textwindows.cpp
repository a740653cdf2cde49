// SPDX-License-Identifier: MIT
#include "mainwindow/textwindows.h"

#include "platform/desktop/documenttext.h"
#include "settings/bindings.h"
#include "settings/predicatelibrary.h"

#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

MiniPredView::MiniPredView(UserDefaults& defaults, PredicateCheck check, QWidget* parent)
    : QWidget(parent)
{
    setObjectName(u"miniPredView"_s);
    setFixedSize(480, 240);

    auto* specPred = new PredicateEditor(std::move(check));
    specPred->setObjectName(u"specPred"_s);
    specPred->setAccessibleName(tr("Special predicate"));
    bind(specPred->document(), defaults, preferences::specPred);

    auto* save = new QPushButton(u"Save"_s);
    save->setObjectName(u"save"_s);
    save->setShortcut(QKeySequence::Save);
    connect(save, &QPushButton::clicked, this, [this, &defaults, specPred] {
        defaults.set(preferences::specPred.key, withPlainQuotes(exactText(specPred->document())));
        close();
    });

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    column->addStretch();
    column->addWidget(specPred, 0, Qt::AlignHCenter);
    column->addWidget(save, 0, Qt::AlignHCenter);
    column->addStretch();
}

TextView::TextView(UserDefaults& defaults, QWidget* parent) : QPlainTextEdit(parent)
{
    setObjectName(u"textView"_s);
    setAccessibleName(tr("Gloss"));
    bind(document(), defaults, preferences::selectText);
    moveCursor(QTextCursor::Start);
}

QSize TextView::sizeHint() const
{
    constexpr int columns = 80;
    constexpr int lines = 20;
    const QFontMetrics metrics = fontMetrics();
    return {metrics.averageCharWidth() * columns, metrics.lineSpacing() * lines};
}
