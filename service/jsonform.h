#pragma once

#include "serviceerror.h"

#include <QByteArray>

#include <functional>
#include <string>
#include <vector>

namespace tavro::assistantservice {

class JsonForm;

/// A member that an object must have.
struct FormMember {
    enum class Kind { Boolean, Text, Number, Objects };

    const char *key = nullptr;
    Kind kind = Kind::Boolean;
    bool isWhole = false;
    /// What a number may be, how long a text, how many entries a list may hold.
    double minimum = 0.0;
    double maximum = 0.0;
    /// Where the value goes. For each entry of a list `take` is called instead.
    void *value = nullptr;
    JsonForm *entry = nullptr;
    std::function<void()> take;

    // What was found of it in the object that is being read.
    bool seen = false;
    int count = 0;
    /// Goes on from the name: "must be a text". Empty while nothing is wrong.
    QString wrong;
    ServiceError wrongEntry;
};

/// The members that a JSON object must have, and where their values go. It is filled while the text is read: nothing
/// of the text is kept but these values, so that reading costs a few times its size whatever it holds. Other members
/// are ignored; one of these that comes twice is an error.
class JsonForm {
public:
    void boolean(const char *key, bool &value);
    void text(const char *key, int maximumLength, QString &value);
    void wholeNumber(const char *key, int minimum, int maximum, int &value);
    void number(const char *key, double minimum, double maximum, double &value);
    /// A list of objects of the form `entry`. `take` is called after each that is right; it finds the values where
    /// `entry` has put them. `entry` must live as long as this.
    void objects(const char *key, int maximumCount, JsonForm &entry, std::function<void()> take);

    /// Reads `json` into the values. The error is of the first member, in the order of the calls above, that is missing
    /// or wrong, then of the first wrong entry of a list; with an error the values do not count.
    ServiceError fill(const QByteArray &json);

    // For who fills it:
    /// Forgets what was found of an earlier object.
    void restart();
    /// Null where the form has no such member.
    FormMember *find(const std::string &key);
    /// What is wrong with the object that was read; `where` leads to it: "messages[3].".
    ServiceError error(const QString &where) const;

private:
    FormMember &add(const char *key, FormMember::Kind kind, void *value);

    std::vector<FormMember> m_members;
};

} // namespace tavro::assistantservice
