#pragma once

#include "base/Signal.h"
#include "base/Uuid.h"
#include "shell/look/Card.h"
#include "shell/state/BillingCards.h"

#include <vector>

class QTableView;

namespace quorvane {

class BillingTableModel;

/// The projects of a report, one line each, under their head. It is as high as they are and leaves scrolling to the
/// page. The chosen one stays chosen when the lines change. What has no column in a narrow table stands as a second
/// line in another one: the client under its project, review hours under the hours, the rate under the amount.
class BillingTable : public Card {
public:
    explicit BillingTable(const Localization& localization, QWidget* parent = nullptr);
    void setRows(const std::vector<BillingTableRow>& rows);
    [[nodiscard]] QTableView& view() { return *view_; }

    Signal<const Uuid&> edited;  ///< a project, by double click, Enter or F2

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void setUpView();
    void edit(int row);

    BillingTableModel* model_;
    QTableView* view_;
};

}  // namespace quorvane
