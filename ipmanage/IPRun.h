#pragma once

#include <QtGlobal>

#include <functional>

/// Emits `count` consecutive addresses from `start` on, which has been judged already. A count
/// below 1 emits nothing.
///
/// Addresses that `isRejected` refuses are skipped and do not count. Behind .255 the run goes on at
/// .1 of the next third octet; that .1 is not judged. Where the third octet is 255 already, its
/// carry is put into the second octet with an or: a second octet that is odd stays as it is, and
/// the run comes back to third octets that it had. Each such carry counts as one of the addresses,
/// emits nothing, and the run goes on at .2.
///
/// `emitAddress` answers whether to go on. `isRejected` cannot end the run: one that has lost its
/// host answers false, and `emitAddress` then ends it.
///
/// Ends whatever the answers are. An address that counts and the next are at most 255 questions
/// apart, since each question moves the last octet on, and passing 255 counts, either by the .1 or
/// by the carry. So at most 255 * (count - 1) questions are asked.
void generateIPRun(quint32 start, int count, const std::function<bool(quint32)>& isRejected,
                   const std::function<bool(quint32)>& emitAddress);
