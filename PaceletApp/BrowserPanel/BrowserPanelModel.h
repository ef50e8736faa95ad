#pragma once

#include "Core/Browser/BrowserController.h"
#include "PaceletApp/BrowserPanel/BrowserListing.h"
#include "PaceletApp/BrowserPanel/BrowserTexts.h"
#include "PaceletApp/Scheduler/BackgroundTask.h"
#include "PaceletApp/Support/Question.h"
#include "PaceletApp/Support/SharedObjects.h"

#include <QCoroTask>
#include <QObject>
#include <QPointer>
#include <QProperty>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <variant>

namespace pacelet {

/// A sheet's headline and what stands below it.
struct MessageLook {
    Q_GADGET
    QML_VALUE_TYPE(messageLook)
    Q_PROPERTY(QString heading MEMBER heading CONSTANT)
    Q_PROPERTY(QString body MEMBER body CONSTANT)

public:
    QString heading;
    QString body;
};

/// The tab cleaner of one browser. Made when its sheet opens and gone with it; a script that is
/// under way then runs to its end, and its result is dropped.
class BrowserPanelModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the shell")
    /// Raw value of the phase's kind.
    Q_PROPERTY(QString phase READ phaseName NOTIFY phaseChanged)
    Q_PROPERTY(pacelet::MessageLook primer READ primer CONSTANT)
    Q_PROPERTY(QString loadingText READ loadingText CONSTANT)
    Q_PROPERTY(pacelet::MessageLook failure READ failure NOTIFY phaseChanged)
    /// Raw value of how far the way to the browser is made; empty where nothing is to be done.
    Q_PROPERTY(QString setup READ setupName NOTIFY phaseChanged)
    Q_PROPERTY(QString setUpText READ setUpText CONSTANT)
    Q_PROPERTY(pacelet::TabsLook look READ look NOTIFY lookChanged)
    Q_PROPERTY(QAbstractItemModel* rows READ rows CONSTANT)
    /// An action runs, and no other may start.
    Q_PROPERTY(bool working READ working NOTIFY workingChanged)

public:
    /// All of `objects` outlive this.
    BrowserPanelModel(const SharedObjects& objects, ChromiumBrowser browser,
                      QObject* parent = nullptr);

    const std::vector<BrowserWindow>& windows() const { return listing_.windows; }
    const std::optional<ExtensionUsage>& extensions() const { return extensions_; }
    const TabSelection& selected() const { return selected_; }
    bool working() const { return working_.value(); }

    QString phaseName() const;
    MessageLook primer() const;
    QString loadingText() const;
    MessageLook failure() const;
    QString setupName() const;
    QString setUpText() const;
    const TabsLook& look() const { return look_.value(); }
    QAbstractItemModel* rows() { return &rows_; }

    /// Accepts the explanation, for good, and reads the listing.
    Q_INVOKABLE void proceed();
    Q_INVOKABLE void load();
    Q_INVOKABLE void openAutomationSettings();

    /// Makes us known to the browser. What is left to do is then told.
    Q_INVOKABLE void setUp();
    /// Puts the extension's folder on the clipboard.
    Q_INVOKABLE void copyFolder();

    /// Takes the tab in this row into the selection or out of it. Tabs of incognito windows and the
    /// heads of windows stay out.
    Q_INVOKABLE void select(int row, bool selected);

    // The actions of the loaded list; those that close something ask first.
    Q_INVOKABLE void closeDuplicates();
    Q_INVOKABLE void closeSelected();
    Q_INVOKABLE void merge();
    Q_INVOKABLE void openMemorySaver();

Q_SIGNALS:
    void phaseChanged();
    void lookChanged();
    void workingChanged();

private:
    using Script = std::function<void(const BrowserController&)>;
    using Reading = std::variant<BrowserListing, BrowserPhase>;

    static QCoro::Task<> load(QPointer<BrowserPanelModel> model);
    /// Looks again without a word, and goes on where the browser can be reached now.
    static QCoro::Task<> lookAgain(QPointer<BrowserPanelModel> model);
    static QCoro::Task<> setUp(QPointer<BrowserPanelModel> model);
    void browsersChanged();
    /// From a background task's reading.
    void show(Reading reading);
    static QCoro::Task<> measureExtensions(QPointer<BrowserPanelModel> model);
    static QCoro::Task<> perform(QPointer<BrowserPanelModel> model, Script run);
    static QCoro::Task<> openMemorySaver(QPointer<BrowserPanelModel> model);
    /// The phase that a failure leads to, or nothing.
    BackgroundTask<std::optional<BrowserPhase>> runInBackground(Script run);
    BackgroundTask<Reading> readInBackground();

    const BrowserPhase& phase() const { return phase_.value(); }
    std::string primerKey() const;
    void askClose(std::vector<BrowserTab> tabs, std::string title);
    void ask(Question question, Script run);
    void setListing(BrowserListing listing);
    void showRows(std::vector<TabRow> rows);
    void clearSelection();
    void refreshLook();

    SharedObjects objects_;
    ChromiumBrowser browser_;
    BrowserController controller_;
    BrowserListing listing_;
    std::optional<ExtensionUsage> extensions_;
    TabSelection selected_;
    ObserverHandle watch_; ///< of browsers that come and go

    TabListModel rows_;
    Q_OBJECT_BINDABLE_PROPERTY(BrowserPanelModel, BrowserPhase, phase_,
                               &BrowserPanelModel::phaseChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(BrowserPanelModel, bool, working_, false,
                                         &BrowserPanelModel::workingChanged)
    Q_OBJECT_BINDABLE_PROPERTY(BrowserPanelModel, TabsLook, look_, &BrowserPanelModel::lookChanged)
};

} // namespace pacelet
