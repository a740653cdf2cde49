// SPDX-License-Identifier: MIT
#include "platform/filereplacement.h"

#include <QCoreApplication>
#include <QDir>
#include <QSaveFile>

Result<void> replaceFile(const QString& path, const std::function<bool(QIODevice&)>& write)
{
    QSaveFile file(path);
    const auto failed = [&] {
        const QString text =
            QCoreApplication::translate("Failures", "The file “%1” could not be written: %2.");
        return failure(text.arg(QDir::toNativeSeparators(path), file.errorString()).toStdString());
    };
    if (!file.open(QIODevice::WriteOnly))
        return failed();
    if (!write(file)) {
        const auto result = failed(); // before cancelling, which has an error text of its own
        file.cancelWriting();
        return result;
    }
    if (!file.commit())
        return failed();
    return {};
}
