#pragma once

#include <QHostAddress>
#include <QList>
#include <QNetworkInterface>
#include <QString>
#include <QVector>

/// One network adapter of this PC, as far as its addresses are chosen by it.
struct SLocalAdapter
{
    QString hardwareAddress;
    QString humanReadableName;
    QNetworkInterface::InterfaceFlags flags;
    bool isWifi = false;
    QList<QHostAddress> addresses;
};

/// The IPv4 addresses of the adapters that are up and running, are no loop-back and do not have
/// "Adapter" in their name, in the order of the adapters' hardware addresses, Wi-Fi last.
QList<QHostAddress> usableAddresses(const QVector<SLocalAdapter>& adapters);

/// The usable addresses of this PC.
QList<QHostAddress> localAddresses();

/// The address behind which free ones are looked for: the first that is neither 127.0.0.1 nor 0, or
/// 127.0.0.1 when there is none.
quint32 proposalBase(const QList<QHostAddress>& addresses);
