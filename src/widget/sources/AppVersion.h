#pragma once

#include <optional>
#include <QString>
#include <QUrl>

/// Which version this is, how versions compare, and where its pages are.
namespace AppVersion {

/// The product's own server, an HTTPS address that ends in "/"; set when the program is built.
[[nodiscard]] const QString &site();

/// The running version.
[[nodiscard]] const std::optional<QString> &current();

/// Whether `candidate` comes after `base`. Versions are numbers with dots between them, a missing
/// one counting as 0; with anything else on either side nothing is newer.
[[nodiscard]] bool isNewer(const QString &candidate, const QString &base);

/// The page of a version in a language of the interface. A link that leads away from the site is
/// not followed; the site's first page stands in for it.
[[nodiscard]] QUrl pageURL(const std::optional<QString> &link, const QString &language);

} // namespace AppVersion
