#pragma once

#include <QTest>
#include <QVariantAnimation>

/// Waits for a frame of the animations: what fades in a widget that is gone ends with it, and is
/// freed. False when there is none in time.
inline bool awaitAnimationFrame()
{
    QVariantAnimation frames;
    frames.setStartValue(0);
    frames.setEndValue(1);
    frames.setDuration(50);
    frames.start();
    return QTest::qWaitFor([&] { return frames.state() == QAbstractAnimation::Stopped; });
}
