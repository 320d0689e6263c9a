#pragma once

class QModelIndex;
class QString;

/// Returns what a row of the processor tree shows besides its name, for assistive technology: its
/// kind, and its state or what it holds. "Processor, Online, Number: 5", "Processor group,
/// Processors: 3", "Project, Processor groups: 2". Empty for a row without a type.
QString rowDescription(const QModelIndex& row);
