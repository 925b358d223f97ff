#pragma once
// Pages that attack the program, for engine tests to serve from a loopback
// server.
#include "LocalHttpServer.h"

namespace hostile {

// Every page sets its title to "ready" once its attack is under way.
inline void serve(LocalHttpServer& server)
{
    const QByteArray ready = "<title>ready</title>";
    server.setPage("/loop.html", ready + "<script>setTimeout(() => { for (;;) {} }, 50);</script>");
    server.setPage("/alerts.html", "<script>for (let i = 0; i < 200; ++i) alert('storm ' + i);"
                                   "document.title = 'ready';</script>");
    server.setPage("/confirms.html", "<script>let yes = 0; for (let i = 0; i < 200; ++i) "
                                     "yes += confirm('again?'); document.title = 'ready ' + yes;"
                                     "</script>");
    server.setPage("/bounce.html",
                   ready +
                       "<script>let n = Number(location.hash.slice(1)) || 0;"
                       "setTimeout(() => location.replace('/bounce.html?' + (++n) + '#' + n), 10);"
                       "</script>");
    QByteArray huge = "<html><head>" + ready + "</head><body>";
    const QByteArray row = "<p>" + QByteArray(990, 'x') + "</p>\n";
    while (huge.size() < 50 * 1024 * 1024)
        huge += row;
    server.setPage("/huge.html", huge + "</body></html>");
    // Looks for the agent's channel, guesses at its relay, and clicks by script.
    server.setPage(
        "/forger.html",
        "<a id=a href='#x' style='display:block;width:200px;height:100px'>link</a><script>"
        "const seen = [typeof qt, typeof QWebChannel, typeof qubAgent].join(',');"
        "const record = {kind: 'click', tag: 'A', trusted: true, subframe: false};"
        "window.postMessage({qubAgentRelay: '', record: record}, '*');"
        "window.postMessage({qubAgentRelay: undefined, record: record}, '*');"
        "document.getElementById('a').click();"
        "document.getElementById('a').dispatchEvent(new MouseEvent('click', {bubbles: true}));"
        "document.title = 'ready ' + seen;</script>");
}

} // namespace hostile
