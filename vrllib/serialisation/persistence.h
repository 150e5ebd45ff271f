#pragma once

#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "vrllib/serialisation/serialisable.h"

/// @file
/// How a class becomes persistent.
///
/// 1. In the class, behind the virtual destructor: VRL_PERSISTENT(Class) (VRL_PERSISTENT_ROOT where no base is
///    persistent), and among the data: SerRegister serRegister; SerrDoneFlag serDone;
/// 2. In its .cpp: VRL_DEFINE_PERSISTENCE(Class, Bases...) with the bases whose members are saved as well, or
///    VRL_DEFINE_PERSISTENCE_ROOT(Class) without any.
/// 3. Beside it, the saved format at one glance:
///
///        SerFormat<Port> const& Port::serFormat() {
///            static auto const format = SerFormat<Port>("Port").type("BB::Port").member("currCS", &Port::currCS);
///            return format;
///        }
///
/// Members are numbered from 1 in the order of the table: the first above is saved under "Port::1". A member that is
/// added at the end leaves older files readable. Format and ids belong to the class and are made once.

namespace Vorlane_v1_0 {

/// The saved format of one class level: its names and its own members.
///
/// A format is made once and is never destroyed: objects with static storage may be saved to the very end of the
/// process.
template <class C>
class SerFormat {
public:
    /// Asks an object for a text.
    using Ask = std::string (*)(C&);

    /// `name` is the class name that prefixes the ids. It is the stored type as well, unless type() says otherwise.
    explicit SerFormat(std::string const& name) : table(new Table{name, name, nullptr, nullptr, {}}) {}

    /// The stored type is a fixed text.
    SerFormat&& type(std::string text) && {
        table->typeText = std::move(text);
        return std::move(*this);
    }
    /// The stored type is asked of the object.
    SerFormat&& type(Ask ask) && {
        table->askType = ask;
        return std::move(*this);
    }
    /// The comment of the object in a listing is asked of the object.
    SerFormat&& doc(Ask ask) && {
        table->askDoc = ask;
        return std::move(*this);
    }

    /// The next member, streamed by its Serialisable or by the wrapper W that is named.
    template <class W = void, class M>
    SerFormat&& member(char const* name, M C::*field) && {
        using Wrapper = std::conditional_t<std::is_void_v<W>, Serialisable<M>, W>;
        table->members.push_back(std::make_unique<Field<M, Wrapper>>(nextId(), name, field));
        return std::move(*this);
    }

    /// The next member is a process-wide variable.
    template <class M>
    SerFormat&& shared(char const* name, M& variable) && {
        table->members.push_back(std::make_unique<Variable<M>>(nextId(), name, variable));
        return std::move(*this);
    }

    /// The class name that prefixes the ids.
    std::string const& getClassName() const { return table->className; }
    /// The stored type of an object.
    std::string getTypeName(C& object) const { return table->askType ? table->askType(object) : table->typeText; }
    /// The comment of an object in a listing; empty unless doc() was given.
    std::string getDoc(C& object) const { return table->askDoc ? table->askDoc(object) : std::string(); }

    /// Enters the own members of an object.
    void enter(SerRegister& reg, C& object) const {
        for (auto const& member : table->members) reg.registerMember(*member, member->address(object));
    }

private:
    struct Member : detail::SerMember {
        using detail::SerMember::SerMember;
        virtual void* address(C& object) const = 0;
    };

    template <class M, class Wrapper>
    struct Field final : Member {
        Field(std::string memberId, char const* memberName, M C::*f)
            : Member(std::move(memberId), memberName), field(f) {}
        void* address(C& object) const override { return &(object.*field); }
        bool write(void* target, SerialiserBase* s) const override {
            return Wrapper(*static_cast<M*>(target), this->name).write(s);
        }
        bool read(void* target, DeSerialiserBase* d) const override {
            return Wrapper(*static_cast<M*>(target), this->name).read(d);
        }
        M C::*field;
    };

    template <class M>
    struct Variable final : Member {
        Variable(std::string memberId, char const* memberName, M& v)
            : Member(std::move(memberId), memberName), variable(v) {}
        void* address(C&) const override { return &variable; }
        bool write(void*, SerialiserBase* s) const override { return Serialisable<M>(variable, this->name).write(s); }
        bool read(void*, DeSerialiserBase* d) const override { return Serialisable<M>(variable, this->name).read(d); }
        M& variable;
    };

    struct Table {
        std::string className;
        std::string typeText;
        Ask askType;
        Ask askDoc;
        std::vector<std::unique_ptr<Member>> members;
    };

    std::string nextId() const {
        return generateIDStr(table->className, static_cast<unsigned int>(table->members.size()) + 1);
    }

    Table* table;
};

namespace detail {

/// Fills a register once. A text thrown by a registration goes to the standard error stream and leaves the flag false.
VRL_API void registerOnce(SerrDoneFlag& done, void (*fill)(void*), void* object);

}  // namespace detail
}  // namespace Vorlane_v1_0

/// What VRL_PERSISTENT_ROOT and VRL_PERSISTENT have in common.
#define VRL_PERSISTENT_OPERATIONS_(Class, Virtual, Override)                                                           \
protected:                                                                                                             \
    /** The type that is saved with an object, by which a reader knows it again. */                                    \
    Virtual std::string getSerTypeName() Override;                                                                     \
    /** The version that is saved with an object: 1. */                                                                \
    Virtual int getSerVerNo() Override;                                                                                \
    /** The comment of an object in a listing. */                                                                      \
    Virtual std::string getSerDoc() Override;                                                                          \
    /** The register of the object, filled on first use. Null if that failed. */                                       \
    Virtual ::Vorlane_v1_0::SerRegister* getSerRegister() Override;                                                    \
    /** The class name that prefixes the ids of the own members. */                                                    \
    std::string getSerClassName();                                                                                     \
    /** Enters the own members. */                                                                                     \
    void registerMySerialisables(::Vorlane_v1_0::SerRegister& reg);                                                    \
    /** Enters the members of the persistent bases, then the own ones. */                                              \
    void doRegisterSerialisables(::Vorlane_v1_0::SerRegister& reg);                                                    \
    /** Fills the register, unless that is done. */                                                                    \
    void registerSerialisables();                                                                                      \
                                                                                                                       \
public:                                                                                                                \
    /** Writes the object as one compound. False if a member fails. */                                                 \
    bool write(::Vorlane_v1_0::SerialiserBase* s);                                                                     \
    /** Reads the object from one compound of its very type and version. On false, what was read stays. */             \
    bool read(::Vorlane_v1_0::DeSerialiserBase* d);                                                                    \
                                                                                                                       \
private:                                                                                                               \
    template <class>                                                                                                   \
    friend class ::Vorlane_v1_0::Serialisable;                                                                         \
    static ::Vorlane_v1_0::SerFormat<Class> const& serFormat();                                                        \
    template <class... Bases>                                                                                          \
    void registerBases([[maybe_unused]] ::Vorlane_v1_0::SerRegister& reg) {                                            \
        (this->Bases::doRegisterSerialisables(reg), ...);                                                              \
    }

/// Declares the persistence operations of a class whose bases have none; the four virtual ones come first.
#define VRL_PERSISTENT_ROOT(...) VRL_PERSISTENT_OPERATIONS_(VRL_UNPAREN_((__VA_ARGS__)), virtual, )

/// Declares the persistence operations of a class that has a persistent base.
#define VRL_PERSISTENT(...) VRL_PERSISTENT_OPERATIONS_(VRL_UNPAREN_((__VA_ARGS__)), , override)

/// Defines the operations of a class; behind the class stand the persistent bases, in the order of registration.
#define VRL_DEFINE_PERSISTENCE(Class, ...) VRL_DEFINE_PERSISTENCE_OF(, (Class), (__VA_ARGS__))
/// Defines the operations of a class without persistent bases.
#define VRL_DEFINE_PERSISTENCE_ROOT(Class) VRL_DEFINE_PERSISTENCE_OF(, (Class), ())

/// The same for a class template: its template head, then its name and its bases in parentheses.
#define VRL_DEFINE_PERSISTENCE_OF(Template, Class, Bases)                                                              \
    Template std::string VRL_UNPAREN_(Class)::getSerTypeName() { return serFormat().getTypeName(*this); }              \
    Template int VRL_UNPAREN_(Class)::getSerVerNo() { return 1; }                                                      \
    Template std::string VRL_UNPAREN_(Class)::getSerDoc() { return serFormat().getDoc(*this); }                        \
    Template ::Vorlane_v1_0::SerRegister* VRL_UNPAREN_(Class)::getSerRegister() {                                      \
        registerSerialisables();                                                                                       \
        return serDone ? &serRegister : nullptr;                                                                       \
    }                                                                                                                  \
    Template std::string VRL_UNPAREN_(Class)::getSerClassName() { return serFormat().getClassName(); }                 \
    Template void VRL_UNPAREN_(Class)::registerMySerialisables(::Vorlane_v1_0::SerRegister& reg) {                     \
        serFormat().enter(reg, *this);                                                                                 \
    }                                                                                                                  \
    Template void VRL_UNPAREN_(Class)::doRegisterSerialisables(::Vorlane_v1_0::SerRegister& reg) {                     \
        this->template registerBases<VRL_UNPAREN_(Bases)>(reg);                                                        \
        registerMySerialisables(reg);                                                                                  \
    }                                                                                                                  \
    Template void VRL_UNPAREN_(Class)::registerSerialisables() {                                                       \
        auto const fill = [](void* whole) {                                                                            \
            auto* const self_ = static_cast<VRL_UNPAREN_(Class)*>(whole);                                              \
            self_->doRegisterSerialisables(self_->serRegister);                                                        \
        };                                                                                                             \
        ::Vorlane_v1_0::detail::registerOnce(serDone, fill, this);                                                     \
    }                                                                                                                  \
    Template bool VRL_UNPAREN_(Class)::write(::Vorlane_v1_0::SerialiserBase* s) {                                      \
        return ::Vorlane_v1_0::Serialisable<VRL_UNPAREN_(Class)>(*this, "").write(s);                                  \
    }                                                                                                                  \
    Template bool VRL_UNPAREN_(Class)::read(::Vorlane_v1_0::DeSerialiserBase* d) {                                     \
        return ::Vorlane_v1_0::Serialisable<VRL_UNPAREN_(Class)>(*this, "").read(d);                                   \
    }

/// A text without the parentheses about it, which protect its commas.
#define VRL_UNPAREN_(X) VRL_UNPAREN_INNER_ X
/// Drops the parentheses for VRL_UNPAREN_.
#define VRL_UNPAREN_INNER_(...) __VA_ARGS__
