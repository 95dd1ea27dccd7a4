#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <utility>

namespace tidewell {

/// Gives an environment variable another value, or none, until this is destroyed: for what Qt reads
/// from the environment, and programs that this one starts should not.
class ScopedVariable final {
public:
    /// A null `value` removes the variable. `name` must outlive this.
    ScopedVariable(const char* name, const QByteArray& value)
        : name_(name)
        , earlier_(qgetenv(name)) {
        set(value);
    }
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;
    ~ScopedVariable() { set(earlier_); }

private:
    void set(const QByteArray& value) { value.isNull() ? qunsetenv(name_) : qputenv(name_, value); }

    const char* name_;
    QByteArray earlier_;
};

} // namespace tidewell
