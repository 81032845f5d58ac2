#include "widget/platform/secretStore.h"

#include "awaited.h"
#include <gtest/gtest.h>

namespace {

const QString service = QStringLiteral("A service's name");

TEST(SecretStore, asksTheSystemsOwnToolAndBelievesOnlyASuccess)
{
    EXPECT_EQ(secretStore::keychain(service).arguments.join(u'|').toStdString(),
        "find-generic-password|-s|A service's name|-w");
    EXPECT_EQ(secretStore::keychain(service).program, QStringLiteral("/usr/bin/security"));
    const struct {
        std::optional<ProcessResult> result;
        std::optional<QByteArray> secret;
    } rows[] = {
        {ProcessResult {0, "secret\n"}, "secret\n"},
        {ProcessResult {1, "no such item"}, {}},
        {ProcessResult {137, "half a sec"}, {}},
        {std::nullopt, {}},
    };
    for (const auto &row : rows) {
        QStringList asked;
        const ProgramRunner runner = [&](const QString &program, const QStringList &arguments,
                                         QObject * /*owner*/) {
            asked = QStringList {program} + arguments;
            return QtFuture::makeReadyFuture(row.result);
        };
        const auto secret = awaited(secretStore::lookup(service, runner, nullptr));
        ASSERT_TRUE(secret);
        EXPECT_EQ(*secret, row.secret);
#ifndef Q_OS_MACOS
        EXPECT_EQ(asked.join(u'|').toStdString(), "secret-tool|lookup|service|A service's name");
#endif
    }
}

} // namespace
