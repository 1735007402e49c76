#include "portfolio_model.h"

#include "context/messages.h"

namespace tallora {
namespace {

// Numbers and amounts to the right, as amounts are read.
QVariant alignmentOf(int column) {
    const bool number = column == PortfolioModel::Id || column == PortfolioModel::Total ||
                        column == PortfolioModel::ACuenta;
    return QVariant::fromValue(Qt::AlignVCenter | (number ? Qt::AlignRight : Qt::AlignLeft));
}

}  // namespace

PortfolioModel::PortfolioModel(const WorkingContext& ctx, QObject* parent)
    : QAbstractTableModel(parent), ctx_(ctx) {}

void PortfolioModel::setRows(treasury::Tab tab, std::vector<treasury::Recibo> rows) {
    beginResetModel();
    tab_ = tab;
    rows_ = std::move(rows);
    endResetModel();
    emit headerDataChanged(Qt::Horizontal, Nombre, Nombre);
}

const treasury::Recibo* PortfolioModel::recibo(int row) const {
    return row >= 0 && row < static_cast<int>(rows_.size()) ? &rows_[row] : nullptr;
}

int PortfolioModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int PortfolioModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant PortfolioModel::data(const QModelIndex& index, int role) const {
    const treasury::Recibo* r = index.isValid() ? recibo(index.row()) : nullptr;
    if (!r) return {};
    const int column = index.column();
    if (role == Qt::TextAlignmentRole) return alignmentOf(column);
    if (role != Qt::DisplayRole) return {};
    switch (column) {
        case Id:
            return QString::number(r->id);
        case Fecha:
            return r->data;
        case Vencimiento:
            return r->vencimiento;
        case Nombre:
            return r->party;
        case Factura:
            return r->factura;
        case Total:
            return r->total;
        case ACuenta:
            return r->pendiente;
        default:
            return {};
    }
}

QVariant PortfolioModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) return {};
    if (role == Qt::TextAlignmentRole) return alignmentOf(section);
    if (role != Qt::DisplayRole) return {};
    switch (section) {
        case Id:
            return QStringLiteral("ID");
        case Fecha:
            return Missatge(ctx_, 820);
        case Vencimiento:
            return Missatge(ctx_, 6998);
        case Nombre:
            return tab_ == treasury::Tab::Clientes ? Missatge(ctx_, 6688) : Missatge(ctx_, 6689);
        case Factura:
            return QStringLiteral("FACTURA");
        case Total:
            return QStringLiteral("TOTAL");
        case ACuenta:
            return Missatge(ctx_, 6752);
        default:
            return {};
    }
}

}  // namespace tallora
