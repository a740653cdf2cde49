// SPDX-License-Identifier: MIT
#pragma once

#include "platform/result.h"

#include <QByteArray>
#include <QVariantMap>

/// Property lists whose outermost value is a dictionary. Types come through exactly: bool, qint64
/// (a quint64 only above its range), double, QString, QByteArray, QDateTime (whole seconds, UTC),
/// QVariantList and QVariantMap.

/// Reads the XML or the binary form. What is damaged, too large or nested too deeply fails; the
/// description is a clause without the name of the file.
Result<QVariantMap> propertyListFrom(const QByteArray& bytes);

/// The XML form. A value of any other type fails.
Result<QByteArray> propertyListXml(const QVariantMap& dictionary);
