#pragma once

#include <QHostAddress>
#include <QList>
#include <QNetworkInterface>
#include <QString>
#include <QVector>

/// The properties of a network adapter that decide whether its addresses are used.
struct SLocalAdapter
{
    QString hardwareAddress;
    QString humanReadableName;
    QNetworkInterface::InterfaceFlags flags;
    bool isWifi = false;
    QList<QHostAddress> addresses;
};

/// Returns the IPv4 addresses of the adapters that are up and running, are not loop-back and have
/// no "Adapter" in their names. They are sorted by hardware address, Wi-Fi adapters last.
QList<QHostAddress> usableAddresses(const QVector<SLocalAdapter>& adapters);

/// Returns the usable addresses of this PC.
QList<QHostAddress> localAddresses();

/// Returns the address after which free addresses are searched: the first of `addresses` that is
/// neither 127.0.0.1 nor 0, or 127.0.0.1 if there is none.
quint32 proposalBase(const QList<QHostAddress>& addresses);
