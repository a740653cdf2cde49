// SPDX-License-Identifier: MIT
// Precompiled for folders that know QtCore only.
#pragma once

#include "standard.h"

#include <QByteArray>
#include <QDateTime>
#include <QHash>
#include <QList>
#include <QObject>
#include <QProperty>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <chrono>
