#include "indexer/report/Report.h"

namespace indexer {

using namespace usage;

std::string reportText(
    const Statistics &statistics, const ReportOptions &options, const Terminal &terminal)
{
    switch (options.format) {
    case ReportFormat::Json:
        return reportJson(statistics, options);
    case ReportFormat::Csv:
        return reportCsv(statistics, options);
    case ReportFormat::Table:
        break;
    }
    return reportTable(statistics, options, terminal);
}

} // namespace indexer
