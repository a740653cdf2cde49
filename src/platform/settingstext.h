// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QMap>
#include <QStringList>

/// What a settings file holds, in the form that Qt's own settings have: lines "key=value", of which
/// those under a line "[section]" belong to keys "section/key". The values are kept as they are
/// written, so that those of unknown keys stay as they are.
struct SettingsText
{
    QMap<QByteArray, QByteArray> values;
    /// Set when the bytes hold what no settings file holds: then they must not be written over.
    bool isDamaged = false;
};

SettingsText readSettings(const QByteArray& bytes);
QByteArray writeSettings(const SettingsText& settings);

/// The texts that a value stands for: one, none, or a list.
QStringList textsOfValue(const QByteArray& value);
QByteArray valueOfTexts(const QStringList& texts);
