#include "base/UserMessages.h"

#include "base/DialogSizes.h"
#include "base/GuiThread.h"
#include "host/common/SoftwareName.h"
#include "host/widgets/MessageBox.h"

void tellUser(QWidget* parent, const QString& text)
{
    Q_ASSERT(isGuiThread());
    CMessageBox::information(parent, text, custom_software_name(), QDialogButtonBox::Ok,
                             QDialogButtonBox::Ok, DialogSizes::kMessageWidth);
}

bool askUser(QWidget* parent, const QString& text)
{
    Q_ASSERT(isGuiThread());
    return CMessageBox::question(parent, text, custom_software_name(),
                                 QDialogButtonBox::Yes | QDialogButtonBox::No,
                                 QDialogButtonBox::Yes, DialogSizes::kMessageWidth)
           == CMessageBox::Yes;
}
