// SPDX-License-Identifier: MIT
#pragma once

#include "platform/base/result.h"

#include <QByteArray>
#include <QVariantMap>

/// Property lists whose outermost value is a dictionary. Types come through exactly: bool, qint64
/// (a quint64 only above its range), double, QString, QByteArray, QDateTime (in UTC; XML holds
/// whole seconds), QVariantList and QVariantMap.

/// Reads the XML or the binary form. What is damaged, too large or nested too deeply fails; the
/// description is a clause without the name of the file. A reference of a keyed archive becomes the
/// dictionary that stands for it in XML. What has no XML form, such as null, is left out.
Result<QVariantMap> propertyListFrom(const QByteArray& bytes);

/// The XML form. A character that XML cannot hold becomes U+FFFD; a value of any other type fails.
Result<QByteArray> propertyListXml(const QVariantMap& dictionary);
