#pragma once

#include <QList>
#include <QString>
#include <QUuid>

/// Returns a short form of an identity for the log, its two ends: "{5b2d…0001}".
QString shortId(const QUuid& id);

/// Returns the number of identities and the first of them: "2: [{5b2d…0001}, {5b2d…0002}]".
QString shortIds(const QList<QUuid>& ids);
