// QUB-BROWSER page agent. Runs at document creation in every frame, in the
// program's own script world. Reports each mouse-down and click to the
// program at once, before the page's own handlers run, and the drags that
// start in the page; gathers the links of the page and its frames when the
// program asks.
(function () {
    'use strict';
    var token = '%RELAY_TOKEN%';
    var isTop = window === window.top;
    var queue = [];
    var agent = null;
    // A hostile page may hold millions of links; the list stops there.
    var linkLimit = 100000;
    var frameWait = 1500;

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

    function whenConnected(call) {
        if (agent)
            call(agent);
        else
            queue.push(call);
    }

    function deliver(record) {
        whenConnected(function (a) { a.report(record); });
    }

    function removeContent(doc, pictures, flash) {
        function named(text) { return text.toLowerCase().indexOf('swf') >= 0; }
        try {
            if (pictures)
                Array.from(doc.images).forEach(function (e) { e.remove(); });
            if (flash) {
                Array.from(doc.getElementsByTagName('EMBED')).forEach(function (e) {
                    if (named(e.getAttribute('src') || ''))
                        e.remove();
                });
                Array.from(doc.getElementsByTagName('OBJECT')).forEach(function (e) {
                    if (named(e.innerHTML))
                        e.remove();
                });
            }
        } catch (e) {
            // A document that refuses leaves what was removed so far removed.
        }
    }

    // The page and each of its frames, each frame's agent passing it on.
    function removeContentEverywhere(pictures, flash) {
        removeContent(document, pictures, flash);
        for (var i = 0; i < window.frames.length; ++i)
            window.frames[i].postMessage({qubAgentRelay: token, remove: [pictures, flash]}, '*');
    }

    function linksOf(doc) {
        var found = [];
        var all = doc.getElementsByTagName('*');
        for (var i = 0; i < all.length && found.length < linkLimit; ++i) {
            var href = all[i].getAttribute('href');
            if (href !== null)
                found.push([String(all[i].tagName), String(href)]);
        }
        return found;
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

    if (!isTop) {
        // The frame above asks for this frame's links, or for its content gone.
        window.addEventListener('message', function (e) {
            if (!e.data || e.data.qubAgentRelay !== token ||
                (e.data.collect === undefined && e.data.remove === undefined))
                return;
            e.stopImmediatePropagation();
            if (e.source !== window.parent)
                return;
            if (e.data.remove !== undefined) {
                removeContentEverywhere(!!e.data.remove[0], !!e.data.remove[1]);
                return;
            }
            window.parent.postMessage({qubAgentRelay: token, collected: e.data.collect,
                                       frame: e.data.frame, links: linksOf(document)}, '*');
        }, true);
        return;
    }

    // A drag from the page carries a picture's own address, not the link
    // around it, or else the dragged text; the program tells where it ended.
    window.addEventListener('dragstart', function (e) {
        if (!e.isTrusted)
            return;
        var target = e.target && e.target.nodeType !== 1 ? e.target.parentElement : e.target;
        var link = target && target.closest ? target.closest('a[href], area[href]') : null;
        var text = e.dataTransfer ? e.dataTransfer.getData('text') : '';
        var address = target && target.tagName === 'IMG' ? String(target.src)
            : text ? String(text) : link ? String(link.href) : '';
        whenConnected(function (a) { a.dragStart(address); });
    }, true);
    window.addEventListener('dragend', function (e) {
        if (e.isTrusted)
            whenConnected(function (a) { a.dragEnd(); });
    }, true);

    // Called by the program in this world.
    window.qubRemoveContent = removeContentEverywhere;

    var collections = {};
    function finish(id) {
        var entry = collections[id];
        if (!entry)
            return;
        delete collections[id];
        clearTimeout(entry.timer);
        var documents = [entry.main];
        entry.frames.forEach(function (links) {
            if (links)
                documents.push(links);
        });
        whenConnected(function (a) { a.linksCollected(id, documents); });
    }
    // Called by the program in this world; the answer comes over the channel.
    window.qubCollectLinks = function (id) {
        var frames = [];
        for (var i = 0; i < window.frames.length; ++i)
            frames.push(window.frames[i]);
        var entry = {main: linksOf(document), frames: new Array(frames.length),
                     waiting: frames.length, windows: frames, timer: null};
        collections[id] = entry;
        if (!frames.length)
            return finish(id);
        entry.timer = setTimeout(function () { finish(id); }, frameWait);
        frames.forEach(function (frame, n) {
            frame.postMessage({qubAgentRelay: token, collect: id, frame: n}, '*');
        });
    };

    window.addEventListener('message', function (e) {
        if (!e.data || e.data.qubAgentRelay !== token)
            return;
        e.stopImmediatePropagation();
        if (e.data.collected !== undefined) {
            var entry = collections[e.data.collected];
            var n = e.data.frame;
            if (!entry || entry.windows[n] !== e.source || entry.frames[n])
                return;
            entry.frames[n] = e.data.links;
            if (--entry.waiting === 0)
                finish(e.data.collected);
            return;
        }
        var record = e.data.record;
        record.subframe = true;
        deliver(record);
    }, true);
    new QWebChannel(qt.webChannelTransport, function (channel) {
        agent = channel.objects.qubAgent;
        queue.splice(0).forEach(function (call) { call(agent); });
    });
})();
