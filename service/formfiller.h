#pragma once

#include "jsonform.h"

#include <optional>

namespace tavro::assistantservice {

/// Puts the parts of a JSON text, as they are read one after the other, where a form wants them. It goes into the
/// form's own objects and lists alone and skips everything else.
class FormFiller {
public:
    explicit FormFiller(JsonForm &form);

    void null();
    void boolean(bool value);
    void number(double value);
    /// UTF-8.
    void text(const std::string &value);
    void beginObject();
    void beginList();
    void end();
    /// False where the member was there before; then there is no reason to read on.
    bool key(const std::string &name);

    /// False where the whole text is another thing. Counts at its end.
    bool isObject() const { return m_isObject; }

private:
    /// Either an object that is being read into a form, or a list of such.
    struct Level {
        JsonForm *form = nullptr;
        FormMember *list = nullptr;
    };

    FormMember *wanted(std::optional<FormMember::Kind> kind);
    void beginEntry(FormMember &list);
    void finishEntry(FormMember &list);

    JsonForm &m_form;
    std::vector<Level> m_levels;
    FormMember *m_member = nullptr;
    /// How deep it is in what nobody wants.
    int m_skipped = 0;
    bool m_isObject = true;
};

} // namespace tavro::assistantservice
