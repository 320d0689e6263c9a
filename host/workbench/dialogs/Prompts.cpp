#include "host/workbench/dialogs/Prompts.h"

#include "host/common/SoftwareName.h"
#include "host/workbench/project/ProjectRanges.h"

#include <QCoreApplication>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

namespace {

struct PromptsMessages
{
    Q_DECLARE_TR_FUNCTIONS(Prompts)
};

QInputDialog* prompt(QWidget* parent, const QString& title, const QString& label)
{
    auto* dialog = new QInputDialog(parent);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(title);
    dialog->setLabelText(label);
    dialog->setOkButtonText(PromptsMessages::tr("OK"));
    dialog->setCancelButtonText(PromptsMessages::tr("Cancel"));
    dialog->resize(360, dialog->sizeHint().height());
    return dialog;
}

} // namespace

void askText(QWidget* parent, const QString& title, const QString& label, const QString& preset,
             const std::function<void(const QString&)>& done)
{
    QInputDialog* dialog = prompt(parent, title, label);
    dialog->setTextValue(preset);
    if (auto* field = dialog->findChild<QLineEdit*>())
        field->setMaxLength(ProjectRanges::kMaxNameLength);
    QObject::connect(dialog, &QInputDialog::textValueSelected, parent, done);
    dialog->open();
}

void askNumber(QWidget* parent, const QString& title, const QString& label, int preset, int least,
               int most, const std::function<void(int)>& done)
{
    QInputDialog* dialog = prompt(parent, title, label);
    dialog->setInputMode(QInputDialog::IntInput);
    dialog->setIntRange(least, most);
    dialog->setIntValue(preset);
    QObject::connect(dialog, &QInputDialog::intValueSelected, parent, done);
    dialog->open();
}

void askChoice(QWidget* parent, const QString& title, const QString& label,
               const QStringList& entries, const std::function<void(int)>& done)
{
    QInputDialog* dialog = prompt(parent, title, label);
    dialog->setOption(QInputDialog::UseListViewForComboBoxItems);
    dialog->setComboBoxItems(entries);
    QObject::connect(dialog, &QInputDialog::textValueSelected, parent,
                     [entries, done](const QString& text) { done(entries.indexOf(text)); });
    dialog->open();
}

void showProblem(QWidget* parent, const QString& problem)
{
    auto* box = new QMessageBox(QMessageBox::Warning, custom_software_name(), problem,
                                QMessageBox::Ok, parent);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->button(QMessageBox::Ok)->setText(PromptsMessages::tr("OK"));
    box->setTextFormat(Qt::PlainText);
    box->open();
}
