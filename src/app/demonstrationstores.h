// SPDX-License-Identifier: MIT
#pragma once

#include "platform/base/result.h"

#include <QDateTime>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>
#include <vector>

class Clock;

/// The demonstration store of this process. It grows with time; when the clock is set back, another
/// one begins. The stores go with this object, and those of processes that died are removed.
class DemonstrationStores
{
public:
    /// `parents` are the folders in which all processes of the user have theirs, the most wanted
    /// first. When nothing can be written there, the temporary folder is tried.
    DemonstrationStores(QStringList parents, const Clock& clock);
    ~DemonstrationStores();
    Q_DISABLE_COPY_MOVE(DemonstrationStores)

    /// In the user's folder for what can be made again, and in that of the session.
    static QStringList defaultParents();

    /// Makes the next folder() reach into the present minute, from which a new window reads.
    void expectPresentMinute();

    /// The folder of a store that ends at about now. Fails with the reason of the first parent.
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
