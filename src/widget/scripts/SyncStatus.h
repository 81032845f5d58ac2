#pragma once

#include <optional>
#include <QList>
#include <QString>

// What the sync script tells of itself, in `sync-status.json` and on its standard output. An empty
// optional means "not told".

/// A device that shares its history with this one.
struct SyncLink {
    QString id;
    std::optional<QString> name;
    std::optional<QString> os;
    std::optional<bool> enabled;   ///< its history counts in the totals
    std::optional<QString> seenAt; ///< as the script writes it

    bool operator==(const SyncLink &) const = default;
};

/// The state of this device's sync.
struct SyncStatus {
    /// More than this, in bytes, is no status: it is decoded on the thread of the views.
    static constexpr qint64 most = 1'000'000;

    std::optional<QString> id;
    std::optional<bool> enabled; ///< sync is switched on; not told counts as on
    std::optional<QString> name;
    std::optional<bool> hasPassword; ///< other devices can link to this one
    std::optional<QList<SyncLink>> links;
    std::optional<QString> lastSync;    ///< the last one that succeeded, as the script writes it
    std::optional<QString> historyFrom; ///< as the script writes it
    std::optional<QString> error;       ///< the last command's error code; not told on success

    bool operator==(const SyncStatus &) const = default;

    /// Decodes a document, with or without a byte-order mark; nothing when it is no JSON object.
    /// Any member may be absent, and one of a wrong type counts as absent; a link without an id is
    /// left out. Links stand as they are told, also two with the same id.
    [[nodiscard]] static std::optional<SyncStatus> parse(const QByteArray &bytes);
};
