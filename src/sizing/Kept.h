#pragma once

#include <utility>
#include <variant>

#include "RaisedError.h"

namespace genvara {

/// An answer, or the failure that came in its place and strikes whoever asks for it.
template <typename Answer>
class Kept {
  public:
    /// Asks the question once.
    template <typename Question>
    [[nodiscard]] static Kept Of(Question&& question) {
        try {
            return Kept(std::forward<Question>(question)());
        } catch (const RaisedError& failure) {
            return Kept(failure);
        }
    }

    /// @throws RaisedError of the question.
    [[nodiscard]] const Answer& Get() const {
        if (const auto* failure = std::get_if<RaisedError>(&m_outcome)) {
            throw RaisedError(*failure);
        }
        return *std::get_if<Answer>(&m_outcome);
    }

  private:
    explicit Kept(Answer answer) : m_outcome(std::move(answer)) {}
    explicit Kept(const RaisedError& failure) : m_outcome(failure) {}

    std::variant<Answer, RaisedError> m_outcome;
};

}  // namespace genvara
