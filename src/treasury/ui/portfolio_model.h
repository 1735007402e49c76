#pragma once
// DbGrid1 of the portfolio screen: one row a receipt, as Llista_Recibos reads them. A grid
// with no row keeps only its header.
#include "context/fwd.h"
#include "treasury/portfolio.h"

#include <QAbstractTableModel>

#include <vector>

namespace tallora {

class PortfolioModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { Id, Fecha, Vencimiento, Nombre, Factura, Total, ACuenta, ColumnCount };

    PortfolioModel(const WorkingContext& ctx, QObject* parent = nullptr);

    // The rows of a tab; the party column's header follows the tab.
    void setRows(treasury::Tab tab, std::vector<treasury::Recibo> rows);
    // The receipt of a grid row, or null.
    const treasury::Recibo* recibo(int row) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

private:
    const WorkingContext& ctx_;
    treasury::Tab tab_ = treasury::Tab::Clientes;
    std::vector<treasury::Recibo> rows_;
};

}  // namespace tallora
