#include "PaceletApp/ProcessDetail/SpotlightHelpModel.h"

#include "PaceletApp/Scheduler/Detach.h"

#include <utility>

namespace pacelet {

namespace {

/// Smaller folders are no load on the index.
constexpr std::int64_t leastBytes = 1'000'000'000;

} // namespace

SpotlightHelpModel::SpotlightHelpModel(Scheduler& scheduler, const std::string& home,
                                       QObject* parent)
    : QObject{parent} {
    detach(search(this, scheduler, home, stop_.token()));
}

QCoro::Task<> SpotlightHelpModel::search(QPointer<SpotlightHelpModel> help, Scheduler& scheduler,
                                         std::string home, std::stop_token stop) {
    auto walk = scheduler.runInBackground([home = std::move(home), stop = std::move(stop)] {
        return SpotlightAdvisor::heavyFolders(home, leastBytes, stop);
    });
    const std::vector<HeavyFolder> folders = co_await walk;
    if (help) {
        help->found(folders);
    }
}

void SpotlightHelpModel::found(const std::vector<HeavyFolder>& folders) {
    folders_.update(folderRows(folders));
    searching_ = false;
}

} // namespace pacelet
