#pragma once

#include "host/widgets/ComboBox.h"
#include "host/widgets/WholeTextDelegate.h"

/// Aligns the texts of a combo box's list like the text in its field.
class ComboListDelegate final : public WholeTextDelegate
{
    Q_OBJECT

public:
    explicit ComboListDelegate(CComboBox* box)
        : WholeTextDelegate(box)
        , m_box(box)
    {
    }

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        return WholeTextDelegate::sizeHint(option, index).expandedTo({0, kRowHeight});
    }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        WholeTextDelegate::initStyleOption(option, index);
        option->displayAlignment = m_box->textHorizontalAlignment() | Qt::AlignVCenter;
        option->textElideMode = Qt::ElideRight;
    }

private:
    static constexpr int kRowHeight = 24;

    CComboBox* m_box; // owner
};
