#pragma once

#include <QByteArray>

/// The canned figures of ten years as files, laid out as the indexer and the widget write them:
/// 3,653 days with the weeks and months that they make, and 5,000 sessions.
namespace TenYears {

/// The bytes of a statistics file.
[[nodiscard]] QByteArray statistics();

/// The panel as it begins.
enum class Panel { Shown, Hidden };

/// Puts the statistics into the data folder, and beside them a state in which a wide panel stands
/// by itself and asks nobody for updates. They go with this.
class Home final {
public:
    explicit Home(Panel panel);
    ~Home();
    /// Writes the statistics again, as after a run of the indexer.
    void renew();
    Home(const Home &) = delete;
    Home &operator=(const Home &) = delete;
};

} // namespace TenYears
