#pragma once

#include <QString>
#include <QVector>

namespace tavro::assistantservice {

/// A piece of a sentence: a word, one Chinese character, a number in digits, a sign or a pause.
struct Token {
    enum class Kind { Word, Han, Digits, Sign, Pause };

    Kind kind = Kind::Word;
    /// Folded, see folded().
    QString text;
    /// Where it stands in the sentence.
    int begin = 0;
    int end = 0;
    /// Nothing stands between it and the token before.
    bool joined = false;
    /// It stands in quotation marks.
    bool quoted = false;
};

using Tokens = QVector<Token>;

/// Signs kept are "%", "#" and a minus before a number; pauses are commas, full stops and the like.
Tokens tokenize(const QString &sentence);

} // namespace tavro::assistantservice
