#pragma once

#include "host/widgets/Dialog.h"

#include <utility>

class CComboBox;
class CSpinBox;
class QLabel;

/// Asks how many processors to add and, unless the host fixes it, how many outputs each has. The
/// number is limited to what the project still has room for. countAndOutputs() is the answer once
/// exec() returned 1. GUI thread.
class CCustomAddProcessor final : public CDialog
{
    Q_OBJECT

public:
    static constexpr int kFewestOutputs = 2;

    /// `presetOutputs` is proposed, or, when the host fixes the number, taken. One that the list
    /// does not hold leaves the choice open.
    CCustomAddProcessor(int presetOutputs, QWidget* parent);

    /// Returns the number of processors, and of outputs of each: 0 if no number was chosen.
    std::pair<int, int> countAndOutputs() const;

protected:
    void InitWidgets() override;
    void InitLayout(QBoxLayout* body) override;
    void changeEvent(QEvent* event) override;

private:
    void retranslate();

    int m_presetOutputs;
    CSpinBox* m_count = nullptr;      // Qt child
    QLabel* m_countLabel = nullptr;   // Qt child
    CComboBox* m_outputs = nullptr;   // Qt child; null when the host fixes the number
    QLabel* m_outputsLabel = nullptr; // Qt child; null likewise
};
