// QUB-BROWSER page agent. Runs at document creation in every frame, in the
// program's own script world. Reports each mouse-down and click to the
// program at once, before the page's own handlers run.
(function () {
    'use strict';
    var token = '%RELAY_TOKEN%';
    var isTop = window === window.top;
    var queue = [];
    var agent = null;

    function describe(event, kind) {
        var target = event.target;
        if (target && target.nodeType !== 1)
            target = target.parentElement;
        var link = target && target.closest ? target.closest('a[href], area[href]') : null;
        var focused = document.activeElement;
        return {
            kind: kind,
            time: Date.now(),
            screenX: event.screenX, screenY: event.screenY,
            pageX: event.pageX, pageY: event.pageY,
            tag: target ? target.tagName : '',
            href: link ? String(link.href) : (target && target.src ? String(target.src) : ''),
            inputType: target && target.tagName === 'INPUT' ? String(target.type || '') : '',
            focusedTag: focused ? focused.tagName : '',
            focusedHref: focused && focused.href ? String(focused.href) : '',
            trusted: event.isTrusted,
            subframe: !isTop
        };
    }

    function deliver(record) {
        if (agent)
            agent.report(record);
        else
            queue.push(record);
    }

    function send(record) {
        if (isTop)
            deliver(record);
        else
            window.top.postMessage({qubAgentRelay: token, record: record}, '*');
    }

    window.addEventListener('mousedown', function (e) { send(describe(e, 'mousedown')); }, true);
    window.addEventListener('click', function (e) { send(describe(e, 'click')); }, true);
    window.addEventListener('auxclick', function (e) { send(describe(e, 'click')); }, true);

    if (!isTop)
        return;
    window.addEventListener('message', function (e) {
        if (!e.data || e.data.qubAgentRelay !== token)
            return;
        e.stopImmediatePropagation();
        var record = e.data.record;
        record.subframe = true;
        deliver(record);
    }, true);
    new QWebChannel(qt.webChannelTransport, function (channel) {
        agent = channel.objects.qubAgent;
        queue.splice(0).forEach(function (record) { agent.report(record); });
    });
})();
