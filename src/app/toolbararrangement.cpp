// SPDX-License-Identifier: MIT
#include "app/toolbararrangement.h"

#include <QAction>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QToolBar>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

struct StyleName
{
    Qt::ToolButtonStyle style;
    QLatin1StringView name;
};

constexpr auto styleNames = std::to_array<StyleName>({
    {Qt::ToolButtonTextUnderIcon, QLatin1StringView("iconsAndText")},
    {Qt::ToolButtonIconOnly, QLatin1StringView("icons")},
    {Qt::ToolButtonTextOnly, QLatin1StringView("text")},
});

bool knows(const ToolBarArrangement& arrangement, const QString& identifier)
{
    return std::any_of(arrangement.items.begin(), arrangement.items.end(),
                       [&](const auto& item) { return item.identifier == identifier; });
}

} // namespace

ToolBarArrangement ToolBarArrangement::of(const QToolBar& bar)
{
    ToolBarArrangement arrangement;
    arrangement.style = bar.toolButtonStyle();
    for (const QAction* action : bar.actions())
        arrangement.items.append({action->objectName(), true});
    return arrangement;
}

QByteArray ToolBarArrangement::toBytes() const
{
    QJsonArray list;
    for (const Item& item : items)
        list.append(QJsonObject{{u"item"_s, item.identifier}, {u"shown"_s, item.shown}});
    QJsonObject object{{u"items"_s, list}, {u"visible"_s, visible}};
    for (const auto& [named, name] : styleNames) {
        if (named == style)
            object.insert(u"style"_s, name);
    }
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

ToolBarArrangement ToolBarArrangement::fromBytes(const QByteArray& bytes,
                                                 const ToolBarArrangement& original)
{
    const QJsonObject object = QJsonDocument::fromJson(bytes).object();
    ToolBarArrangement arrangement;
    arrangement.style = original.style;
    arrangement.visible = object.value("visible"_L1).toBool(original.visible);
    for (const auto& [style, name] : styleNames) {
        if (object.value("style"_L1) == name)
            arrangement.style = style;
    }
    for (const auto& value : object.value("items"_L1).toArray()) {
        const QString identifier = value["item"_L1].toString();
        if (knows(original, identifier) && !knows(arrangement, identifier))
            arrangement.items.append({identifier, value["shown"_L1].toBool(true)});
    }
    for (const Item& item : original.items) {
        if (!knows(arrangement, item.identifier))
            arrangement.items.append(item);
    }
    return arrangement;
}

QString itemName(const QAction& item)
{
    QString name = item.text();
    return name.remove(u'&').remove(u'…');
}
