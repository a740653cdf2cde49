// SPDX-License-Identifier: MIT
#include "settings/settingsview.h"

#include "platform/desktop/symbols.h"
#include "settings/gentab.h"
#include "settings/predtab.h"

using namespace Qt::StringLiterals;

SettingsView::SettingsView(UserDefaults& defaults, PredicateCheck check, QWidget* parent)
    : QTabWidget(parent)
{
    setObjectName(u"settings"_s);
    setWindowTitle(tr("Settings"));
    addTab(new GenTab(defaults), symbolIcon(u"gear"_s), tr("General"));
    addTab(new PredTab(defaults, std::move(check)),
           symbolIcon(u"line.3.horizontal.decrease.circle"_s), tr("Predicate"));
    setMinimumSize(minimumSizeHint()); // the tabs' own minimum sizes and the tab bar
}
