// SPDX-License-Identifier: MIT
#pragma once

#include "tools/logfoldertool.h"

#include <QLocale>

#include <optional>

/// The number with at most four significant digits, in the signs of the locale, without grouping or
/// exponent.
std::optional<QString> withFourSignificantDigits(double number, const QLocale& locale);

/// The model of the diagnostics tool, which looks into a folder laid out as a log store.
class Diagnoser final : public LogFolderTool
{
    Q_OBJECT

public:
    static std::shared_ptr<Diagnoser> make(const Platform& platform, FileManager& files);

    /// The folder that the panel opens at: the one chosen last.
    QUrl theDefaultURL() const { return m_theDefaultURL; }

    /// Asks for a folder; counts what is in it and dates its oldest log file.
    void getInfo();

Q_SIGNALS:
    void theDefaultURLChanged();

protected:
    void chooseFolder(const std::function<void(const FilePath&)>& then) override;

private:
    Diagnoser(const Platform& platform, FileManager& files);

    void setTheDefaultURL(const QUrl& location);
    qsizetype countItems(const FilePath& folder) const;
    QString oldestEntryLine(const FilePath& persist) const;
    FileTime now() const;

    QUrl m_theDefaultURL;
};
