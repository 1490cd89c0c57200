// The platform's binder service manager: only the lookup of a service by name.
#pragma once

namespace android {

class IBinder {
public:
    virtual ~IBinder() = default;
};

// The platform's strong pointer; the library only tests it for null.
template <class T>
class sp {
public:
    sp(T* object = nullptr) : m_ptr(object) {}
    T* get() const { return m_ptr; }
    T* operator->() const { return m_ptr; }
    bool operator==(decltype(nullptr)) const { return m_ptr == nullptr; }
    bool operator!=(decltype(nullptr)) const { return m_ptr != nullptr; }

private:
    T* m_ptr;
};

class String16 {
public:
    explicit String16(const char* text) : m_text(text) {}
    const char* string() const { return m_text; }

private:
    const char* m_text;
};

class IServiceManager {
public:
    virtual ~IServiceManager() = default;
    // Null when no service of that name is registered; never waits.
    virtual sp<IBinder> checkService(const String16& name) const = 0;
};

sp<IServiceManager> defaultServiceManager();

}  // namespace android
