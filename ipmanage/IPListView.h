#pragma once

#include "host/widgets/TableView.h"

class CIPListModel;

/// The table of the host's IP list: address and name. Rows are selected whole, several at a time;
/// nothing is edited in place. GUI thread.
class CIPListView final : public CTableView
{
    Q_OBJECT

public:
    explicit CIPListView(QWidget* parent = nullptr);
    ~CIPListView() override;

    /// Reads the list from the host again.
    void reload();

protected:
    void changeEvent(QEvent* event) override;

private:
    void retranslate();

    CIPListModel* m_model; // deleted by the view
};
