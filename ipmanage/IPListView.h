#pragma once

#include "host/widgets/TableView.h"

class CIPListModel;

/// A table of the host's IP list with the columns address and name. Selects whole rows, several at
/// a time. Not supported: editing in the table. GUI thread.
class CIPListView final : public CTableView
{
    Q_OBJECT

public:
    explicit CIPListView(QWidget* parent = nullptr);
    ~CIPListView() override;

    /// Reads the list from the host.
    void reload();

protected:
    void changeEvent(QEvent* event) override;

private:
    void retranslate();

    CIPListModel* m_model; // deleted by the view
};
