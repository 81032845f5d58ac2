#pragma once

#include "TestFiles.h"
#include "widget/core/Paths.h"

/// Makes the indexer script a shell script: the `node` that the login shell finds is a shell here.
inline void installIndexer(const QByteArray &commands)
{
    const QDir home(Paths::home());
    for (const char *profile : {".profile", ".zprofile"}) {
        writeFile(home.filePath(QLatin1String(profile)), "PATH=\"$HOME/tools:/usr/bin:/bin\"\n");
    }
    writeProgram(home.filePath(QStringLiteral("tools/node")), "#!/bin/sh\nexec sh \"$@\"\n");
    writeFile(Paths::indexer(), commands);
}
