#pragma once

#include <QAbstractListModel>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <cstddef>
#include <vector>

namespace quillon {

/// One tool as a card shows it.
struct ToolCard {
    QString toolId;
    QString name;
    QString subtitle;
    QString icon; // a symbol's name
    bool isEnabled = false;
    bool isInstalling = false;

    bool operator==(const ToolCard&) const = default;
};

/// The first cards of a section, and how many tools it has.
struct ToolCards {
    std::vector<ToolCard> first;
    std::size_t total = 0;
};

/// The cards of one section, in the order in which they are shown; of a long list only the first
/// are made until somebody wants to see more. Main thread only.
class ToolListModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The hub has them.")
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(int total READ total NOTIFY totalChanged)

  public:
    enum Role { ToolId = Qt::UserRole, Name, Subtitle, Icon, IsEnabled, IsInstalling };

    /// How many rows are added at a time.
    static constexpr std::size_t page = 20;

    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] int count() const { return static_cast<int>(cards_.size()); }
    [[nodiscard]] int total() const { return static_cast<int>(total_); }

    /// How many cards are shown at the most.
    [[nodiscard]] std::size_t most() const { return most_; }
    Q_INVOKABLE void showMore();

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    /// Tells observers of nothing but the rows that differ, so that a card that stays is the same
    /// card: it keeps its place, its focus and whatever moves on it.
    void setCards(ToolCards cards);

  Q_SIGNALS:
    void countChanged();
    void totalChanged();
    void moreWanted();

  private:
    void removeMissing(const std::vector<ToolCard>& cards);
    void putCard(int row, const ToolCard& card);
    [[nodiscard]] int rowOf(const QString& toolId, int from) const;

    std::vector<ToolCard> cards_;
    std::size_t total_ = 0;
    std::size_t most_ = page;
};

} // namespace quillon
