#ifndef VELA_CONVENTIONS_FAULT_HPP
#define VELA_CONVENTIONS_FAULT_HPP

namespace vela::conventions {

/// An exception of the standard type Base whose text is a literal. Base would copy its text to
/// memory of its own; this one can be thrown when there is none, so that a routine which turns an
/// overflow into a defined result does so then, too.
template <class Base>
class Fault final : public Base {
public:
    explicit Fault(const char* text) : Base(""), m_text(text) {}
    const char* what() const noexcept override { return m_text; }

private:
    const char* m_text;
};

}  // namespace vela::conventions

#endif
