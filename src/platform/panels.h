// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QUrl>

#include <functional>
#include <optional>

/// What a panel lets the user choose.
enum class ContentType {
    EntryList,  ///< Tessel's own lists, extension "tessel"
    RichText,   ///< RTF, extension "rtf"
    Text,       ///< plain text, extension "txt"
    LogArchive, ///< a ".logarchive" folder, picked as one item
    Folder
};

struct OpenPanelRequest
{
    ContentType contentType{};
    QString confirmText; ///< text of the confirm button; empty = the toolkit's own
    QString startFolder; ///< absolute path; empty or absent = the last folder used
    bool showsHidden = false;
};

struct SavePanelRequest
{
    ContentType contentType{};
    QString proposedName; ///< with its extension
};

struct PanelResult
{
    bool confirmed = false;
    std::optional<QUrl> location; ///< absent when cancelled, or when a confirmed panel yields none
};

using PanelCompletion = std::function<void(const PanelResult&)>;

/// The open and save panels. Both calls return at once; the completion runs later on the same
/// thread, exactly once. It must hold what it needs: the window may have closed by then.
class Panels
{
public:
    virtual ~Panels() = default;
    virtual void open(const OpenPanelRequest& request, PanelCompletion completion) = 0;
    virtual void save(const SavePanelRequest& request, PanelCompletion completion) = 0;
};
