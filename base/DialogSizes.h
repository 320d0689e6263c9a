#pragma once

#include <QSize>

/// The sizes of the panel's dialogs, in device-independent pixels. The contents make up what is not
/// given here.
namespace DialogSizes {

constexpr int kMessageWidth = 330;
constexpr int kLanUsbWarningWidth = 293;

constexpr QSize kAddressManagement(648, 393);

/// For one address, and for two rows of fields.
constexpr QSize kAddressEntry(260, 114);
constexpr QSize kTwoRowAddressEntry(260, 146);

/// With and without the choice of the outputs.
constexpr int kAdditionHeight = 157;
constexpr int kAdditionHeightWithoutOutputs = 121;

} // namespace DialogSizes
