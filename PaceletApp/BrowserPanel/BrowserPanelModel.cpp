#include "PaceletApp/BrowserPanel/BrowserPanelModel.h"

#include "Core/Fixes/FixRunner.h"
#include "Core/Platform/Platform.h"
#include "Core/Sampling/PSProcessSource.h"
#include "PaceletApp/Components/QuestionModel.h"
#include "PaceletApp/Scheduler/Detach.h"
#include "PaceletApp/Scheduler/Scheduler.h"
#include "PaceletApp/Support/QtText.h"

#include <QClipboard>
#include <QGuiApplication>

#include <algorithm>
#include <utility>
#include <variant>

namespace pacelet {

namespace {

MessageLook lookOf(const BrowserTexts::Message& message) {
    return {qtText(message.heading), qtText(message.body)};
}

/// `extension` may be null: then no browser needs one.
BrowserPhase phaseHere(const std::exception& error, BrowserExtension* extension,
                       ChromiumBrowser browser) {
    BrowserPhase phase = phaseAfter(error);
    if (extension != nullptr && phase.kind == BrowserPhase::Kind::notPermitted) {
        phase.setup = extension->setup(std::string{rawValue(browser)});
    }
    return phase;
}

ExtensionUsage readExtensions(ToolRunner& tools, const std::string& bundle) {
    std::string listing;
    try {
        listing = PSProcessSource::argsListing(tools);
    } catch (const LaunchError&) {
        // Nothing counts as running.
        listing.clear();
    }
    return TabCleanup::extensions(listing, bundle);
}

} // namespace

BrowserPanelModel::BrowserPanelModel(const SharedObjects& objects, ChromiumBrowser browser,
                                     QObject* parent)
    : QObject{parent},
      objects_{objects},
      browser_{browser},
      controller_{objects.platform} {
    refreshLook();
    if (BrowserExtension* const extension = objects_.platform.browserExtension) {
        watch_ = extension->observe([this] { browsersChanged(); });
    }
    if (objects_.platform.preferences.boolean(primerKey()).value_or(false)) {
        load();
    } else {
        phase_ = BrowserPhase{BrowserPhase::Kind::primer, {}};
    }
}

std::string BrowserPanelModel::primerKey() const {
    return "primer.automation." + std::string{rawValue(browser_)};
}

QString BrowserPanelModel::phaseName() const {
    return qtText(rawValue(phase().kind));
}

MessageLook BrowserPanelModel::primer() const {
    return lookOf(BrowserTexts::primer(browser_));
}

QString BrowserPanelModel::loadingText() const {
    return qtText(BrowserTexts::loading(browser_));
}

MessageLook BrowserPanelModel::failure() const {
    if (!phase().isFailure()) {
        return {};
    }
    return lookOf(BrowserTexts::failure(
        phase(), browser_, phase().setup ? objects_.platform.browserExtension->folder() : ""));
}

QString BrowserPanelModel::setupName() const {
    return phase().setup ? qtText(rawValue(*phase().setup)) : QString{};
}

QString BrowserPanelModel::setUpText() const {
    return qtText(BrowserTexts::setUp(browser_));
}

void BrowserPanelModel::proceed() {
    objects_.platform.preferences.setBoolean(primerKey(), true);
    load();
}

void BrowserPanelModel::openAutomationSettings() {
    FixRunner{objects_.platform}.open(SettingsPane::automation);
}

void BrowserPanelModel::setUp() {
    if (!working_ && phase().setup) {
        detach(setUp(QPointer{this}));
    }
}

QCoro::Task<> BrowserPanelModel::setUp(QPointer<BrowserPanelModel> model) {
    model->working_ = true;
    auto writing = model->objects_.scheduler.runInBackground(
        [extension = model->objects_.platform.browserExtension, browser = model->browser_] {
            return extension->registerProgram(std::string{rawValue(browser)});
        });
    const bool isWritten = co_await writing;
    if (!model) {
        co_return;
    }
    if (isWritten) {
        co_await lookAgain(model);
    } else {
        model->phase_ =
            BrowserPhase{BrowserPhase::Kind::failed, BrowserTexts::setUpFailed(model->browser_)};
    }
    if (model) {
        model->working_ = false;
    }
}

void BrowserPanelModel::copyFolder() {
    if (BrowserExtension* const extension = objects_.platform.browserExtension) {
        QGuiApplication::clipboard()->setText(qtText(extension->folder()));
    }
}

void BrowserPanelModel::browsersChanged() {
    if (phase().kind == BrowserPhase::Kind::notPermitted ||
        phase().kind == BrowserPhase::Kind::notRunning) {
        detach(lookAgain(QPointer{this}));
    }
}

void BrowserPanelModel::load() {
    detach(load(QPointer{this}));
}

QCoro::Task<> BrowserPanelModel::load(QPointer<BrowserPanelModel> model) {
    model->phase_ = BrowserPhase{BrowserPhase::Kind::loading, {}};
    auto reading = model->readInBackground();
    Reading result = co_await reading;
    if (model) {
        model->show(std::move(result));
        co_await measureExtensions(model);
    }
}

QCoro::Task<> BrowserPanelModel::lookAgain(QPointer<BrowserPanelModel> model) {
    const BrowserPhase before = model->phase();
    auto reading = model->readInBackground();
    Reading result = co_await reading;
    // Whatever the user has done meanwhile goes on as it is.
    if (model && model->phase() == before) {
        model->show(std::move(result));
        co_await measureExtensions(model);
    }
}

BackgroundTask<BrowserPanelModel::Reading> BrowserPanelModel::readInBackground() {
    return objects_.scheduler.runInBackground(
        [controller = controller_, browser = browser_,
         extension = objects_.platform.browserExtension]() -> Reading {
            try {
                return BrowserListing{controller.windows(browser)};
            } catch (const std::exception& error) {
                return phaseHere(error, extension, browser);
            }
        });
}

void BrowserPanelModel::show(Reading reading) {
    if (auto* const listing = std::get_if<BrowserListing>(&reading)) {
        setListing(std::move(*listing));
        phase_ = BrowserPhase{BrowserPhase::Kind::loaded, {}};
    } else {
        phase_ = std::get<BrowserPhase>(std::move(reading));
    }
}

QCoro::Task<> BrowserPanelModel::measureExtensions(QPointer<BrowserPanelModel> model) {
    const auto bundle = model ? model->objects_.platform.workspace.applicationPath(
                                    std::string{rawValue(model->browser_)})
                              : std::nullopt;
    if (!bundle) {
        co_return;
    }
    auto measuring = model->objects_.scheduler.runInBackground(
        [&tools = model->objects_.platform.tools, path = *bundle] {
            return readExtensions(tools, path);
        });
    const ExtensionUsage usage = co_await measuring;
    if (model) {
        model->extensions_ = usage;
        model->refreshLook();
    }
}

BackgroundTask<std::optional<BrowserPhase>> BrowserPanelModel::runInBackground(Script run) {
    return objects_.scheduler.runInBackground(
        [run = std::move(run), controller = controller_, browser = browser_,
         extension = objects_.platform.browserExtension]() -> std::optional<BrowserPhase> {
            try {
                run(controller);
                return std::nullopt;
            } catch (const std::exception& error) {
                return phaseHere(error, extension, browser);
            }
        });
}

QCoro::Task<> BrowserPanelModel::perform(QPointer<BrowserPanelModel> model, Script run) {
    model->working_ = true;
    auto running = model->runInBackground(std::move(run));
    std::optional<BrowserPhase> failure = co_await running;
    if (!model) {
        co_return;
    }
    if (failure) {
        model->phase_ = std::move(*failure);
    } else {
        model->clearSelection();
        co_await load(model);
    }
    if (model) {
        model->working_ = false;
    }
}

void BrowserPanelModel::openMemorySaver() {
    detach(openMemorySaver(QPointer{this}));
}

QCoro::Task<> BrowserPanelModel::openMemorySaver(QPointer<BrowserPanelModel> model) {
    model->working_ = true;
    auto opening =
        model->runInBackground([browser = model->browser_](const BrowserController& controller) {
            controller.openMemorySaver(browser);
        });
    // Whether it worked is seen in the browser.
    co_await opening;
    if (model) {
        model->working_ = false;
    }
}

void BrowserPanelModel::select(int row, bool selected) {
    if (row < 0 || row >= rows_.rowCount() || !rows_.item(row).isSelectable) {
        return;
    }
    TabRow next = rows_.item(row);
    if (selected) {
        selected_.insert(next.tabID);
    } else {
        selected_.erase(next.tabID);
    }
    next.isChecked = selected;
    rows_.replace(row, std::move(next));
    refreshLook();
}

void BrowserPanelModel::closeDuplicates() {
    askClose(listing_.duplicates, BrowserTexts::closeDuplicatesTitle(listing_.duplicates.size()));
}

void BrowserPanelModel::closeSelected() {
    std::vector<BrowserTab> tabs = listing_.tabsOf(selected_);
    std::string title = BrowserTexts::closeSelectedTitle(tabs.size());
    askClose(std::move(tabs), std::move(title));
}

void BrowserPanelModel::askClose(std::vector<BrowserTab> tabs, std::string title) {
    std::string message = BrowserTexts::closeMessage(tabs);
    ask({.title = std::move(title), .message = std::move(message), .confirm = "Close Tabs"},
        [tabs = std::move(tabs), browser = browser_](const BrowserController& controller) {
            controller.close(tabs, browser);
        });
}

void BrowserPanelModel::merge() {
    if (!listing_.plan) {
        return;
    }
    const MergePlan& plan = *listing_.plan;
    ask({.title = BrowserTexts::mergeTitle(plan, listing_.profiles),
         .message = BrowserTexts::mergeMessage(plan),
         .confirm = "Merge"},
        [plan, browser = browser_](const BrowserController& controller) {
            controller.merge(plan, browser);
        });
}

void BrowserPanelModel::ask(Question question, Script run) {
    question.destructive = true;
    question.paragraphLines = 2; // titles of tabs can be long
    objects_.question.ask(this, std::move(question),
                          [this, run = std::move(run)] { detach(perform(QPointer{this}, run)); });
}

void BrowserPanelModel::setListing(BrowserListing listing) {
    listing_ = std::move(listing);
    std::vector<TabRow> rows = std::exchange(listing_.rows, {});
    for (TabRow& row : rows) {
        row.isChecked = selected_.contains(row.tabID);
    }
    rows_.update(std::move(rows));
    refreshLook();
}

void BrowserPanelModel::clearSelection() {
    // The rows follow with the listing that is read next.
    selected_.clear();
    refreshLook();
}

void BrowserPanelModel::refreshLook() {
    look_ = tabsLook(listing_, browser_, extensions_, selected_);
}

} // namespace pacelet
