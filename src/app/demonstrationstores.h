// SPDX-License-Identifier: MIT
#pragma once

#include "platform/result.h"

#include <QDateTime>
#include <QString>

#include <memory>
#include <vector>

class Clock;

/// The demonstration stores of this process: one, and a newer one beside it when that no longer
/// reaches far enough. They go with this object, and those of processes that died are removed.
class DemonstrationStores
{
public:
    /// `parent` is the folder in which all processes of the user have theirs.
    DemonstrationStores(QString parent, const Clock& clock);
    ~DemonstrationStores();
    Q_DISABLE_COPY_MOVE(DemonstrationStores)

    /// In the user's folder for what can be made again.
    static QString defaultParent();

    /// Makes the next folder() reach into the present minute, from which a new window reads.
    void expectPresentMinute();

    /// The folder of a store that ends at about now. The one that this gave before stays for those
    /// who still read it.
    Result<QString> folder();

private:
    class OwnFolder;

    bool isRecent() const;
    Result<void> write();
    Result<std::unique_ptr<OwnFolder>> makeFolder() const;

    QString m_parent;
    const Clock& m_clock;
    std::vector<std::unique_ptr<OwnFolder>> m_folders; ///< the newest last
    QDateTime m_end;                                   ///< of the newest
    QDateTime m_expected;                              ///< what it is to reach
};
