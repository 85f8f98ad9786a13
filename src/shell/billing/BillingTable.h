#pragma once

#include "base/Signal.h"
#include "base/Uuid.h"
#include "shell/look/Card.h"
#include "shell/state/BillingCards.h"

#include <vector>

namespace quorvane {

class BillingTableDelegate;
class BillingTableModel;
class BillingTableView;

/// The projects of a report, one line each. The chosen one stays chosen when the lines change.
class BillingTable : public Card {
public:
    explicit BillingTable(const Localization& localization, QWidget* parent = nullptr);
    void setRows(const std::vector<BillingTableRow>& rows);

    Signal<const Uuid&> edited;  ///< a project, by double click, Enter or F2
    Signal<QRect> focused;       ///< the row on which the focus is now, in the table

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void applyLayout();

    BillingTableModel* model_;
    BillingTableDelegate* delegate_;
    BillingTableView* view_;
};

}  // namespace quorvane
