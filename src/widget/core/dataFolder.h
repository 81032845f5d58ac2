#pragma once

/// Makes our data folder with any missing parents, for its owner alone (0700); an existing one is
/// left as it is. False when it is not there afterwards.
bool makeDataFolder();
