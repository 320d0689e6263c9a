#pragma once

class QLocalSocket;

/// Closes the connection when the client has everything that was written to `socket`. Call it after
/// writing, on the socket's thread; the socket must not be closed by others.
void closeWhenRead(QLocalSocket& socket);
