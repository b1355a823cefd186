#pragma once

#include "Hub/HubToolModule.h"
#include "Hub/HubToolStore.h"
#include "Platform/Bundle.h"
#include "Platform/Workspace.h"
#include "Views/ToolListModel.h"

#include <QObject>
#include <QString>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

#include <set>
#include <string>
#include <string_view>

namespace quillon {

/// The tool whose screen is selected, as its screen's head shows it.
struct SelectedTool {
    Q_GADGET
    QML_VALUE_TYPE(selectedTool)
    Q_PROPERTY(QString toolId MEMBER toolId)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString subtitle MEMBER subtitle)
    Q_PROPERTY(QString icon MEMBER icon)
    Q_PROPERTY(bool isInstalled MEMBER isInstalled)
    Q_PROPERTY(QUrl screen MEMBER screen)
    Q_PROPERTY(QObject* manager MEMBER manager)

  public:
    QString toolId; // empty: the list of the tools is shown
    QString name;
    QString subtitle;
    QString icon; // a symbol's name
    bool isInstalled = false;
    QUrl screen;                // with its settings; empty when its module has none to show
    QObject* manager = nullptr; // whose properties they are; null for a tool without a module

    bool operator==(const SelectedTool&) const = default;
};

/// What the screens show and do, made of the store and of the managers' published properties.
/// Main thread only; what it refers to outlives it.
class HubModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("There is one for all screens.")
    Q_PROPERTY(quillon::ToolListModel* installed READ installed CONSTANT)
    Q_PROPERTY(quillon::ToolListModel* marketplace READ marketplace CONSTANT)
    Q_PROPERTY(quillon::SelectedTool selected READ selected NOTIFY selectedChanged)
    Q_PROPERTY(bool isPermissionMissing READ isPermissionMissing NOTIFY permissionChanged)
    Q_PROPERTY(QString permissionMessage READ permissionMessage NOTIFY permissionChanged)
    Q_PROPERTY(bool reducesMotion READ reducesMotion NOTIFY displayOptionsChanged)
    Q_PROPERTY(bool increasesContrast READ increasesContrast NOTIFY displayOptionsChanged)

  public:
    HubModel(HubToolStore& store, ToolManagers& managers, Workspace& workspace,
             const Bundle& bundle);

    [[nodiscard]] ToolListModel* installed() { return &installed_; }
    [[nodiscard]] ToolListModel* marketplace() { return &marketplace_; }
    [[nodiscard]] const SelectedTool& selected() const { return selected_; }

    /// Of any manager, whether or not its tools are on.
    [[nodiscard]] bool isPermissionMissing() const { return isPermissionMissing_; }

    /// Names the tools that are on and cannot work.
    [[nodiscard]] QString permissionMessage() const { return permissionMessage_; }

    /// What the user wants of all programs.
    [[nodiscard]] bool reducesMotion() const { return displayOptions_.shouldReduceMotion; }
    [[nodiscard]] bool increasesContrast() const { return displayOptions_.shouldIncreaseContrast; }

    /// Once, however often it is asked for until it has ended.
    Q_INVOKABLE void install(const QString& id);
    Q_INVOKABLE [[nodiscard]] bool isInstalled(const QString& id) const;
    Q_INVOKABLE void uninstall(const QString& id);
    Q_INVOKABLE void setEnabled(const QString& id, bool enabled);

    /// Selects the tool's own screen.
    Q_INVOKABLE void customize(const QString& id);
    Q_INVOKABLE void showTools();

    Q_INVOKABLE void openPermissionSettings();
    Q_INVOKABLE void openDonationPage();

  Q_SIGNALS:
    void selectedChanged();
    void permissionChanged();
    void displayOptionsChanged();

  private:
    [[nodiscard]] QObject* manager(std::string_view id) const;
    [[nodiscard]] const HubToolModule* module(std::string_view id) const;
    [[nodiscard]] ToolCard card(const ToolCatalogItem& item) const;
    void followManagers();
    void takeTools();
    void takeSelection();
    void takePermission();
    void takeDisplayOptions();

    HubToolStore& store_;
    ToolManagers& managers_;
    Workspace& workspace_;
    std::string donationPage_;
    std::set<std::string> asked_; // to be installed; the store begins only later
    ToolCatalog builtIn_ = builtInCatalog();
    ToolListModel installed_;
    ToolListModel marketplace_;
    SelectedTool selected_;
    bool isPermissionMissing_ = false;
    QString permissionMessage_;
    DisplayOptions displayOptions_;
};

} // namespace quillon
