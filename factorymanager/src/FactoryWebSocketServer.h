// The library's side of the WebSocket server that the UI channel files share:
// the server thread, the per-connection outboxes and the context's teardown.
#pragma once

#include <string>

struct lws_context;

// Entry of the server thread: finds the manager, creates the context and runs the
// service loop until the manager stops it.
void* threadInitFactoryWebsocketServer(void* unused);

namespace factory_ws {

// A fresh server thread is about to start.
void PrepareStart();
// Queues a text frame for every connection of protocol entry 1 or 2 and wakes the
// service loop, which sends it when each connection becomes writeable.
void Broadcast(int protocolIndex, const std::string& text);
// Ends the service loop (the server thread then returns).
void RequestStop();
// Destroys a context whose service loop has ended.
void DestroyContext(lws_context* context);

}  // namespace factory_ws
