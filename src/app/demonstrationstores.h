// SPDX-License-Identifier: MIT
#pragma once

#include "platform/base/result.h"

#include <QDateTime>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>
#include <vector>

class Clock;

/// The demonstration store of this process. It is extended as time passes; after the clock was set
/// back, a new one is written. The destructor removes the stores. Stores of processes that were
/// killed are removed when a store is written.
class DemonstrationStores
{
public:
    /// The processes of the user have their stores in the first of the folders `parents` that can
    /// be written. If none can, the store goes into the temporary folder.
    DemonstrationStores(QStringList parents, const Clock& clock);
    ~DemonstrationStores();
    Q_DISABLE_COPY_MOVE(DemonstrationStores)

    /// Folders in the user's cache folder and in the session's runtime folder.
    static QStringList defaultParents();

    /// Makes the next folder() contain the first seconds of the present minute, which a new window
    /// reads.
    void expectPresentMinute();

    /// The folder of a store that ends at the present. The error is that of the first parent.
    Result<QString> folder();

private:
    class OwnFolder;
    struct Kept;

    Result<void> begin();
    Result<void> beginIn(const QString& parent);
    void goOn();
    QDateTime endToWrite() const;
    Result<std::unique_ptr<OwnFolder>> makeFolder(const QString& parent) const;

    QStringList m_parents;
    const Clock& m_clock;
    std::unique_ptr<QTemporaryDir> m_temporary;
    std::vector<std::unique_ptr<Kept>> m_stores; ///< the newest last, and one that may be in use
    QDateTime m_end;                             ///< of the newest
    QDateTime m_expected;                        ///< what it is to reach
};
