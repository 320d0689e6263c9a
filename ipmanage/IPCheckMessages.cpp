#include "ipmanage/IPCheckMessages.h"

#include "Interface/IPStatusCodes.h"

#include <QCoreApplication>

#include <array>

namespace {

/// The translation context of a field's dialog, and the texts in the order of the codes.
struct FieldTexts
{
    const char* context;
    std::array<const char*, IPCHECK_UNREASONABLE - IPCHECK_SAME_AS_PC + 1> texts;
};

/// In the order of IPField.
constexpr std::array<FieldTexts, 5> kFields{{
    {"CAddSingleIPDialog",
     {
         QT_TRANSLATE_NOOP("CAddSingleIPDialog", "The IP address entered is same as the IP address "
                                                 "of your PC, it would fail network connection."),
         QT_TRANSLATE_NOOP("CAddSingleIPDialog", "IP address has been used."),
         QT_TRANSLATE_NOOP("CAddSingleIPDialog", "The IP address cannot start with 0."),
         QT_TRANSLATE_NOOP("CAddSingleIPDialog",
                           "The IP address is the same as the default gateway."),
         QT_TRANSLATE_NOOP("CAddSingleIPDialog", "The IP address is the broadcast address."),
         QT_TRANSLATE_NOOP("CAddSingleIPDialog", "IP address is unreasonable."),
     }},
    {"CModifyIPDialog",
     {
         QT_TRANSLATE_NOOP("CModifyIPDialog", "The IP address entered is same as the IP address of "
                                              "your PC, it would fail network connection."),
         QT_TRANSLATE_NOOP("CModifyIPDialog", "IP address has been used."),
         QT_TRANSLATE_NOOP("CModifyIPDialog", "The IP address cannot start with 0."),
         QT_TRANSLATE_NOOP("CModifyIPDialog", "The IP address is the same as the default gateway."),
         QT_TRANSLATE_NOOP("CModifyIPDialog", "The IP address is the broadcast address."),
         QT_TRANSLATE_NOOP("CModifyIPDialog", "IP address is unreasonable."),
     }},
    {"CAddBatchIPDialog",
     {
         QT_TRANSLATE_NOOP("CAddBatchIPDialog", "The IP address entered is same as the IP address "
                                                "of your PC, it would fail network connection."),
         QT_TRANSLATE_NOOP("CAddBatchIPDialog", "IP address has been used."),
         QT_TRANSLATE_NOOP("CAddBatchIPDialog", "The IP address cannot start with 0."),
         QT_TRANSLATE_NOOP("CAddBatchIPDialog",
                           "The IP address is the same as the default gateway."),
         QT_TRANSLATE_NOOP("CAddBatchIPDialog", "The IP address is the broadcast address."),
         QT_TRANSLATE_NOOP("CAddBatchIPDialog", "IP address is unreasonable."),
     }},
    {"CAddBothIpDialog",
     {
         QT_TRANSLATE_NOOP("CAddBothIpDialog", "The IP address 1 entered is same as the IP address "
                                               "of your PC, it would fail network connection."),
         QT_TRANSLATE_NOOP("CAddBothIpDialog", "IP address 1 has been used."),
         QT_TRANSLATE_NOOP("CAddBothIpDialog", "The IP address 1 cannot start with 0."),
         QT_TRANSLATE_NOOP("CAddBothIpDialog",
                           "The IP address 1 is the same as the default gateway."),
         QT_TRANSLATE_NOOP("CAddBothIpDialog", "The IP address 1 is the broadcast address."),
         QT_TRANSLATE_NOOP("CAddBothIpDialog", "IP address 1 is unreasonable."),
     }},
    {"CAddBothIpDialog",
     {
         QT_TRANSLATE_NOOP("CAddBothIpDialog", "The IP address 2 entered is same as the IP address "
                                               "of your PC, it would fail network connection."),
         QT_TRANSLATE_NOOP("CAddBothIpDialog", "IP address 2 has been used."),
         QT_TRANSLATE_NOOP("CAddBothIpDialog", "The IP address 2 cannot start with 0."),
         QT_TRANSLATE_NOOP("CAddBothIpDialog",
                           "The IP address 2 is the same as the default gateway."),
         QT_TRANSLATE_NOOP("CAddBothIpDialog", "The IP address 2 is the broadcast address."),
         QT_TRANSLATE_NOOP("CAddBothIpDialog", "IP address 2 is unreasonable."),
     }},
}};

} // namespace

QString ipCheckMessage(quint32 code, IPField field)
{
    const FieldTexts& texts = kFields.at(static_cast<std::size_t>(field));
    // Smaller codes wrap around to large numbers.
    const quint32 known = code - IPCHECK_SAME_AS_PC;
    const char* const text =
        known < texts.texts.size() ? texts.texts.at(known) : texts.texts.back();
    return QCoreApplication::translate(texts.context, text);
}

QString ipEmptyMessage(IPField field)
{
    return ipCheckMessage(IPCHECK_UNREASONABLE, field);
}

QString ipSameMessage()
{
    return QCoreApplication::translate("CAddBothIpDialog",
                                       "IP address 1 is the same as IP address 2.");
}
