#include "Views/ToolListModel.h"

#include <QSet>

#include <algorithm>
#include <utility>

namespace quillon {

int ToolListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant ToolListModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const ToolCard& card = cards_[static_cast<std::size_t>(index.row())];
    switch (role) {
    case ToolId:
        return card.toolId;
    case Qt::DisplayRole:
    case Name:
        return card.name;
    case Subtitle:
        return card.subtitle;
    case Icon:
        return card.icon;
    case IsEnabled:
        return card.isEnabled;
    case IsInstalling:
        return card.isInstalling;
    default:
        return {};
    }
}

QHash<int, QByteArray> ToolListModel::roleNames() const {
    return {{ToolId, "toolId"}, {Name, "name"},           {Subtitle, "subtitle"},
            {Icon, "icon"},     {IsEnabled, "isEnabled"}, {IsInstalling, "isInstalling"}};
}

void ToolListModel::setCards(ToolCards cards) {
    const auto before = cards_.size();
    removeMissing(cards.first);
    for (std::size_t row = 0; row < cards.first.size(); ++row) {
        putCard(static_cast<int>(row), cards.first[row]);
    }
    if (cards_.size() != before) {
        Q_EMIT countChanged();
    }
    if (std::exchange(total_, cards.total) != cards.total) {
        Q_EMIT totalChanged();
    }
}

void ToolListModel::showMore() {
    most_ += page;
    Q_EMIT moreWanted();
}

void ToolListModel::removeMissing(const std::vector<ToolCard>& cards) {
    QSet<QString> wanted;
    for (const ToolCard& card : cards) {
        wanted.insert(card.toolId);
    }
    for (int row = count() - 1; row >= 0; --row) {
        if (!wanted.contains(cards_[static_cast<std::size_t>(row)].toolId)) {
            beginRemoveRows({}, row, row);
            cards_.erase(cards_.begin() + row);
            endRemoveRows();
        }
    }
}

void ToolListModel::putCard(int row, const ToolCard& card) {
    const int present = rowOf(card.toolId, row);
    if (present < 0) {
        beginInsertRows({}, row, row);
        cards_.insert(cards_.begin() + row, card);
        endInsertRows();
        return;
    }
    if (present != row) {
        beginMoveRows({}, present, present, {}, row);
        const auto first = cards_.begin() + row;
        std::rotate(first, cards_.begin() + present, cards_.begin() + present + 1);
        endMoveRows();
    }
    ToolCard& shown = cards_[static_cast<std::size_t>(row)];
    if (shown != card) {
        shown = card;
        Q_EMIT dataChanged(index(row), index(row));
    }
}

int ToolListModel::rowOf(const QString& toolId, int from) const {
    for (int row = from; row < count(); ++row) {
        if (cards_[static_cast<std::size_t>(row)].toolId == toolId) {
            return row;
        }
    }
    return -1;
}

} // namespace quillon
