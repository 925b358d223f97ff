// QUB-BROWSER page agent. Runs at document creation in every frame, in the
// program's own script world. Reports each of the user's mouse-downs and
// clicks to the program at once, before the page's own handlers run, and the
// drags that start in the page; gathers the links of the page and of its
// frames of the same origin when the program asks, and takes pictures and
// Flash out. A frame's agent answers no message: whatever can post to a frame
// could ask it, page scripts included.
(function () {
    'use strict';
    // Marks a frame's records on their way to the top frame's agent. A page
    // can learn it, so a relayed record is never the user's own click.
    var token = '%RELAY_TOKEN%';
    // What the user has taken out of pages, as it was when this document began.
    var removeAtLoad = [%REMOVE_PICTURES%, %REMOVE_FLASH%];
    var isTop = window === window.top;
    var queue = [];
    var agent = null;
    // A hostile page may hold millions of links in hundreds of frames; the
    // list stops there.
    var linkLimit = 100000;

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

    // The fields of a frame's record as plain strings and numbers.
    function describeRelayed(r) {
        function text(v) { return typeof v === 'string' ? v.slice(0, 4096) : ''; }
        function number(v) { return typeof v === 'number' && isFinite(v) ? v : 0; }
        return {
            kind: r.kind === 'mousedown' ? 'mousedown' : 'click',
            time: number(r.time),
            screenX: number(r.screenX), screenY: number(r.screenY),
            pageX: number(r.pageX), pageY: number(r.pageY),
            tag: text(r.tag), href: text(r.href), inputType: text(r.inputType),
            focusedTag: text(r.focusedTag), focusedHref: text(r.focusedHref),
            trusted: false,
            subframe: true
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

    // The document of each frame of the same origin, below win, in frame
    // order, depth first; a frame of another origin refuses and is left out.
    function sameOriginFrames(win, found) {
        for (var i = 0; i < win.frames.length; ++i) {
            var frame = win.frames[i];
            var doc = null;
            try {
                doc = frame.document;
            } catch (e) {
                doc = null;
            }
            if (doc) {
                found.push(doc);
                sameOriginFrames(frame, found);
            }
        }
        return found;
    }

    // The page and each of its frames of the same origin; a frame of another
    // origin takes its content out itself at its next load.
    function removeContentEverywhere(pictures, flash) {
        removeContent(document, pictures, flash);
        sameOriginFrames(window, []).forEach(function (doc) {
            removeContent(doc, pictures, flash);
        });
    }

    function linksOf(doc, room) {
        var found = [];
        var all = doc.getElementsByTagName('*');
        for (var i = 0; i < all.length && found.length < room; ++i) {
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

    // Only the user's own presses: an event a script made is not reported at
    // all, so a page cannot flood the program or stand in for the user.
    function reportAs(kind) {
        return function (e) {
            if (e.isTrusted)
                send(describe(e, kind));
        };
    }
    window.addEventListener('mousedown', reportAs('mousedown'), true);
    window.addEventListener('click', reportAs('click'), true);
    window.addEventListener('auxclick', reportAs('click'), true);

    // A form the user typed into or changed holds what a reload would lose,
    // so the program never discards its page. Only the user's own edits
    // count, once a document.
    var formEdited = false;
    function reportFormEdited() {
        if (formEdited)
            return;
        formEdited = true;
        if (isTop)
            whenConnected(function (a) { a.setFormEdited(true); });
        else
            window.top.postMessage({qubAgentRelay: token, formEdited: true}, '*');
    }
    function noteFormEdit(e) {
        var target = e.target;
        if (e.isTrusted && target && target.nodeType === 1 &&
            (/^(INPUT|TEXTAREA|SELECT)$/.test(target.tagName) || target.isContentEditable))
            reportFormEdited();
    }
    window.addEventListener('input', noteFormEdit, true);
    window.addEventListener('change', noteFormEdit, true);

    if (!isTop) {
        if (removeAtLoad[0] || removeAtLoad[1]) {
            var removeHere = function () {
                removeContent(document, removeAtLoad[0], removeAtLoad[1]);
            };
            document.addEventListener('DOMContentLoaded', removeHere);
            window.addEventListener('load', removeHere);
        }
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

    // Called by the program in this world; the answer comes over the channel:
    // the page's list, then each frame's of the same origin, read here and
    // never asked of the frame, so no page script can ask in its place.
    window.qubCollectLinks = function (id) {
        var room = linkLimit;
        var documents = [document].concat(sameOriginFrames(window, [])).map(function (doc) {
            var links = linksOf(doc, room);
            room -= links.length;
            return links;
        });
        whenConnected(function (a) { a.linksCollected(id, documents); });
    };

    // A frame's record, relayed; only its fields are taken, never marked the
    // user's own.
    window.addEventListener('message', function (e) {
        if (!e.data || e.data.qubAgentRelay !== token)
            return;
        e.stopImmediatePropagation();
        // Told once a document, however often a frame (or a page that
        // learned the token) says it.
        if (e.data.formEdited === true)
            reportFormEdited();
        else if (typeof e.data.record === 'object' && e.data.record !== null)
            deliver(describeRelayed(e.data.record));
    }, true);
    new QWebChannel(qt.webChannelTransport, function (channel) {
        agent = channel.objects.qubAgent;
        // A new document: no form of the one before counts any more.
        agent.setFormEdited(false);
        queue.splice(0).forEach(function (call) { call(agent); });
    });
})();
