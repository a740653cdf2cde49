// SPDX-License-Identifier: MIT
#include "settings/settingsview.h"

#include "settings/gentab.h"
#include "settings/predtab.h"

using namespace Qt::StringLiterals;

SettingsView::SettingsView(UserDefaults& defaults,
                           PredicateCheck check,
                           const SymbolSource& symbol,
                           QWidget* parent)
    : QTabWidget(parent)
{
    setObjectName(u"settings"_s);
    setWindowTitle(tr("Settings"));
    addTab(new GenTab(defaults), symbol(u"gear"_s), tr("General"));
    addTab(new PredTab(defaults, std::move(check)), symbol(u"line.3.horizontal.decrease.circle"_s),
           tr("Predicate"));
    setMinimumSize(minimumSizeHint()); // the tabs' own minimum sizes and the tab bar
}
