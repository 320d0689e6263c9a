#pragma once

class QString;
struct ProcessorNode;

/// Returns the address or the number of a processor as its row of results shows it, "IP:10.0.0.1".
QString processorDetail(const ProcessorNode& processor);

/// Returns what a row of the tree or of the results shows besides the name, for assistive
/// technology: "Processor, Online, Number: 5".
QString processorDescription(const ProcessorNode& processor);
