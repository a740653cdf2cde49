// SPDX-License-Identifier: MIT
#pragma once

#include "platform/filemanager.h"

#include <QFile>
#include <QTemporaryDir>

#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>

/// A folder on disk that tests fill with files, laid out as logs are.
class LogFolder
{
public:
    FilePath path() const { return QFile::encodeName(m_folder.path()).toStdString(); }
    FilePath path(const FilePath& name) const { return path() / name; }
    QString shownPath(const QString& name = {}) const
    {
        return name.isEmpty() ? m_folder.path() : m_folder.filePath(name);
    }

    void make(const FilePath& name, const QByteArray& bytes = {}) const
    {
        std::filesystem::create_directories(path(name).parent_path());
        std::ofstream(path(name), std::ios::binary) << bytes.toStdString();
    }

    QByteArray bytes(const FilePath& name) const
    {
        std::ifstream stream(path(name), std::ios::binary);
        return QByteArray::fromStdString({std::istreambuf_iterator<char>(stream), {}});
    }

    /// Every file below a folder, by its path in there.
    QStringList files(const FilePath& name) const
    {
        QStringList found;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(path(name))) {
            if (!entry.is_directory())
                found.append(::shownPath(entry.path().lexically_relative(path(name))));
        }
        found.sort();
        return found;
    }

private:
    QTemporaryDir m_folder;
};

/// The files of this machine, of which a test chooses some to fail and some to have other times:
/// the time of a file's birth cannot be set.
class FakeFileManager final : public FileManager
{
public:
    std::function<bool(const FilePath&)> fails = [](const FilePath&) { return false; };
    std::function<void(const FilePath&, FileAttributes&)> alter = [](const FilePath&,
                                                                     FileAttributes&) {};

    Result<std::vector<std::string>> contentsOfFolder(const FilePath& folder) override
    {
        if (fails(folder))
            return refusal(folder);
        return m_files.contentsOfFolder(folder);
    }
    Result<std::vector<FolderItem>> itemsOfFolder(const FilePath& folder,
                                                  const NameFilter& isWanted) override
    {
        if (fails(folder))
            return refusal(folder);
        auto items = m_files.itemsOfFolder(folder, isWanted);
        if (!items)
            return items;
        for (auto& [name, attributes] : *items) {
            if (fails(folder / name))
                attributes = refusal(folder / name);
            else if (attributes)
                alter(folder / name, *attributes);
        }
        return items;
    }
    bool isFolder(const FilePath& path) override { return m_files.isFolder(path); }
    bool isLink(const FilePath& path) override { return m_files.isLink(path); }
    Result<void> createFolder(const FilePath& path) override
    {
        if (fails(path))
            return refusal(path);
        return m_files.createFolder(path);
    }
    std::vector<Failure> copyItem(const FilePath& from,
                                  const FilePath& to,
                                  CopiedTop top,
                                  const CopyObserver& observer) override
    {
        if (fails(from))
            return {refusal(from).value()};
        return m_files.copyItem(from, to, top, observer);
    }
    Result<void> finishFolder(const FilePath& from, const FilePath& to) override
    {
        return m_files.finishFolder(from, to);
    }
    Result<QByteArray> contentsOfFile(const FilePath& path) override
    {
        if (fails(path))
            return refusal(path);
        return m_files.contentsOfFile(path);
    }
    Result<void> writeFile(const FilePath& path, const QByteArray& contents) override
    {
        if (fails(path))
            return refusal(path);
        return m_files.writeFile(path, contents);
    }

private:
    static tl::unexpected<Failure> refusal(const FilePath& path)
    {
        return failure("[" + path.filename().string() + " failed]");
    }

    SystemFileManager m_files;
};
