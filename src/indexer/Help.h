#pragma once

namespace indexer::help {

// What the program says of itself; packaging/man/kestrelbay-indexer.1 tells the same.

extern const char *const purpose;
extern const char *const more; // examples, files, environment, exit status

extern const char *const report;
extern const char *const moreOnReport;

extern const char *const status;
extern const char *const moreOnStatus;

extern const char *const doctor;
extern const char *const moreOnDoctor;

extern const char *const backup;
extern const char *const moreOnBackup;

} // namespace indexer::help
