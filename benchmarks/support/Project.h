#pragma once

#include "Interface/ProcessorNode.h"

#include <QList>

/// What a host's project holds.
struct Project
{
    QList<ProcessorGroupNode> groups;
    QList<ProcessorNode> processors;
};

/// `count` processors in groups of sixteen, listed group by group. Every fourth is addressed by
/// number, the others by IP, in rising order of both, so that the host's order is the tree's. The
/// same for the same count.
Project makeProject(int count);

/// The sizes at which a figure is taken. A host's project ends at 255; the growth beyond is
/// measured all the same.
constexpr int kProjectSizes[] = {255, 1000, 4000, 16000};
