#pragma once

#include <QHash>
#include <QJsonValue>
#include <QString>

#include <functional>

namespace tavro::machineprocess {

class Machine;

/// What a test may have a machine do, by name: {"do": name, "with": argument}.
class Operations {
public:
    explicit Operations(Machine &machine);

    /// Carries out one line of standard input. A line that is none of them ends the program with status 2.
    void carryOut(const QString &line);

private:
    using Operation = std::function<void(const QJsonValue &with)>;

    void addRouted();
    void addSetters();
    void addOwn();

    Machine &m_machine;
    QHash<QString, Operation> m_operations;
};

} // namespace tavro::machineprocess
