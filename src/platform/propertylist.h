// SPDX-License-Identifier: MIT
#pragma once

#include "platform/base/result.h"

#include <QByteArray>
#include <QVariantMap>

/// Property lists whose outermost value is a dictionary. Types come through exactly: bool, qint64
/// (a quint64 only above its range), double, QString (up to a null character), QByteArray,
/// QDateTime (whole seconds in UTC, from 1933 to 2068), QVariantList and QVariantMap.

/// Reads the XML or the binary form. What is damaged, too large or nested too deeply fails; the
/// description is a clause without the name of the file. The references of keyed archives, which no
/// XML can hold, are left out.
Result<QVariantMap> propertyListFrom(const QByteArray& bytes);

/// The XML form. A value of any other type fails.
Result<QByteArray> propertyListXml(const QVariantMap& dictionary);
