#pragma once

#include "host/workbench/project/FaultRule.h"

#include <QString>
#include <QStringList>
#include <QTest>

/// Returns the rule of the text, such as "event 25 lost". Fails the test if the text is none.
inline FaultRule rule(const char* text)
{
    QString problem;
    const auto read = faultOfWords(QString::fromLatin1(text).split(QLatin1Char(' ')), problem);
    if (!read)
        QTest::qFail(qPrintable(problem), __FILE__, __LINE__);
    return read.value_or(FaultRule());
}
