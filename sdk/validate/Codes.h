#pragma once

#include <QString>

/// What the validator can find. Numbers are never reused; docs/validator.md has a paragraph for
/// each.
enum class Code {
    NotLoaded = 1,
    NoEntryPoint = 2,
    VersionDiffers = 3,
    EntryPointFails = 4,
    WrongWidget = 5,
    NotStarted = 6,
    OperationHasNoEffect = 7,
    EventHasNoEffect = 8,
    TreeDiffers = 9,
    WrongUseHasEffect = 10,
    CheckIsMissing = 11,
    CheckIsWrong = 12,
    PanelDoesNotEnd = 13,
    Leak = 14,
    QtWarning = 15,
    Crash = 16,
    Hang = 17,
    Exception = 18,
    HostNotLoaded = 19,
    HostOpensNothing = 20,
    NoObserver = 21,
    ListAndRecordDisagree = 22,
    UnknownIdentityIsKnown = 23,
    BadIdentity = 24,
    GroupIsNotListed = 25,
    NoEvent = 26,
    NotCarriedOut = 27,
    EventBeforeChange = 28,
    HandlerThrows = 29,
    ThreadsDisagree = 30,
    UnequalLists = 31,
    NothingRan = 32,
};

constexpr int kCodes = 32;

/// Returns the code as it stands in reports and in the docs, such as "TSA-V03".
QString codeText(Code code);

/// Returns what the code is about, in a few words; the title of its paragraph in the docs.
QString codeTitle(Code code);

/// Returns whether a finding with this text of a code, one of the validator or of the panel's
/// contract checks, fails the test. Others are warnings.
bool isFailure(const QString& code);
