#pragma once
// Every QObject made while a census is held, and the signals of the
// program's own classes among them that nothing listens to. Qt reports each
// object as it is made and as it goes through the object hooks that debugging
// tools use; a signal counts as heard when any object of its class has a
// connection to it.
#include <QMetaMethod>
#include <QMutex>
#include <QObject>
#include <QSet>
#include <QStringList>

QT_BEGIN_NAMESPACE
extern Q_CORE_EXPORT quintptr qtHookData[];
QT_END_NAMESPACE

class ObjectCensus
{
public:
    ObjectCensus()
    {
        census() = this;
        previousAdd_ = std::exchange(qtHookData[addHook], reinterpret_cast<quintptr>(&added));
        previousRemove_ =
            std::exchange(qtHookData[removeHook], reinterpret_cast<quintptr>(&removed));
    }
    ~ObjectCensus()
    {
        qtHookData[addHook] = previousAdd_;
        qtHookData[removeHook] = previousRemove_;
        census() = nullptr;
    }
    ObjectCensus(const ObjectCensus&) = delete;
    ObjectCensus& operator=(const ObjectCensus&) = delete;

    // "Class::signal" for each signal declared by a class of the program (not
    // Qt's) that no living object of that class has a listener for.
    QStringList unheardSignals() const
    {
        QMutexLocker lock(&mutex_);
        QSet<QString> declared, heard;
        for (QObject* object : live_)
            for (const QMetaObject* meta = object->metaObject(); meta && ours(*meta);
                 meta = meta->superClass())
                for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
                    const QMetaMethod method = meta->method(i);
                    if (method.methodType() != QMetaMethod::Signal)
                        continue;
                    const QString name = QString::fromLatin1(meta->className()) +
                                         QStringLiteral("::") + QString::fromLatin1(method.name());
                    declared.insert(name);
                    if ((object->*connected)(method))
                        heard.insert(name);
                }
        QStringList unheard = (declared - heard).values();
        unheard.sort();
        return unheard;
    }

private:
    // The hooks' places in Qt's table.
    static constexpr int addHook = 3;
    static constexpr int removeHook = 4;

    struct Peek : QObject
    {
        using QObject::isSignalConnected;
    };
    static constexpr bool (QObject::*connected)(const QMetaMethod&) const =
        &Peek::isSignalConnected;

    static ObjectCensus*& census()
    {
        static ObjectCensus* current = nullptr;
        return current;
    }
    // Qt's classes are named Q and a capital letter, or live in Qt's namespaces.
    static bool ours(const QMetaObject& meta)
    {
        const QByteArray name = meta.className();
        return !(name.size() > 1 && name[0] == 'Q' && QChar::isUpper(name[1])) &&
               !name.startsWith("Qt");
    }
    static void added(QObject* object)
    {
        QMutexLocker lock(&census()->mutex_);
        census()->live_.insert(object);
    }
    static void removed(QObject* object)
    {
        QMutexLocker lock(&census()->mutex_);
        census()->live_.remove(object);
    }

    quintptr previousAdd_;
    quintptr previousRemove_;
    mutable QMutex mutex_;
    QSet<QObject*> live_;
};
