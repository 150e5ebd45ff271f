#pragma once

#include <functional>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "vrllib/serialisation/serialisable.h"

/// @file
/// How a class becomes persistent.
///
/// 1. In the class, after the virtual destructor: VRL_PERSISTENT(Class) (VRL_PERSISTENT_ROOT where no base is
///    persistent), and among the data: SerRegister serRegister; SerrDoneFlag serDone;
/// 2. In its .cpp: VRL_DEFINE_PERSISTENCE(Class, Bases...) with the bases whose members are saved as well, or
///    VRL_DEFINE_PERSISTENCE_ROOT(Class) without any.
/// 3. Beside it, the saved format at one glance:
///
///        SerFormat<Foundry::CSInfo> const& Foundry::CSInfo::serFormat() {
///            static auto const format = SerFormat<CSInfo>("CSInfo", 1)
///                                           .type("Foundry::CSInfo")
///                                           .member(1, "default CS name", &CSInfo::csName)
///                                           .member(2, "default Flow name", &CSInfo::flowName);
///            return format;
///        }
///
/// A row is the number, the name and the member: the first one above is saved under the id "CSInfo::1",
/// which getSerId("default CS name") returns. A new member takes a number that no member has ever had, and leaves older
/// files readable; a member that goes leaves a gap. The version is another matter: a new one makes all older files of
/// the class unreadable.
///
/// A member type without a wrapper does not compile. A number that is in the table twice makes every save and read of
/// the class fail, with a line on std::cerr.

namespace Vorlane_v1_0 {

namespace detail {

/// Whether a value has a wrapper without naming one: it is plain, a pair, or of a class with the persistence
/// operations.
template <class M, class = void>
inline constexpr bool kHasWrapper = kIsPlain<M> || kIsPair<M>;
template <class M>
inline constexpr bool
    kHasWrapper<M, std::void_t<decltype(std::declval<M&>().write(std::declval<SerialiserBase*>())),
                               decltype(std::declval<M&>().read(std::declval<DeSerialiserBase*>()))>> = true;

/// Throws the report of a name that getSerId was asked for and no member has.
[[noreturn]] VRL_API void throwNoSuchMember();

}  // namespace detail

/// The saved format of one class level: its names, its version and its own members.
///
/// A format is made once and is never destroyed: objects with static storage may be saved to the very end of the
/// process.
template <class C>
class SerFormat {
public:
    /// Asks an object for a string.
    using Ask = std::string (*)(C&);

    /// `name` is the class name that prefixes the ids. It is the stored type as well, unless type() says otherwise.
    SerFormat(std::string const& name, int version) : table(new Table{name, version, name, nullptr, nullptr, {}, {}}) {}

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

    /// A member, streamed by its Serialisable or by the wrapper W that is named. `get` is a pointer to it, or a
    /// function that returns it of an object.
    template <class W = void, class Get>
    SerFormat&& member(unsigned int number, char const* name, Get get) && {
        using M = std::remove_reference_t<std::invoke_result_t<Get, C&>>;
        using Wrapper = std::conditional_t<std::is_void_v<W>, Serialisable<M>, W>;
        static_assert(!std::is_void_v<W> || detail::kHasWrapper<M>, "The type of this member needs a wrapper.");
        add(std::make_unique<Field<M, Wrapper, Get>>(idOf(number), name, get));
        return std::move(*this);
    }

    /// A process-wide variable that is saved with every object.
    template <class M>
    SerFormat&& shared(unsigned int number, char const* name, M& variable) && {
        static_assert(detail::kHasWrapper<M>, "The type of this variable needs a wrapper.");
        add(std::make_unique<Variable<M>>(idOf(number), name, variable));
        return std::move(*this);
    }

    /// The class name that prefixes the ids.
    std::string const& getClassName() const { return table->className; }
    /// The stored type of an object.
    std::string getTypeName(C& object) const { return table->askType ? table->askType(object) : table->typeText; }
    /// The comment of an object in a listing; empty unless doc() was given.
    std::string getDoc(C& object) const { return table->askDoc ? table->askDoc(object) : std::string(); }

    int getVersion() const { return table->version; }
    /// The id of the member of that name. Throws (`char*`) if there is none.
    std::string const& getId(std::string const& memberName) const {
        for (auto const& member : table->members)
            if (member->name == memberName) return member->id.text;
        detail::throwNoSuchMember();
    }

    /// Enters the own members of an object. Throws (`char*`) if a number is in the table twice.
    void enter(SerRegister& reg, C& object) const {
        if (!table->fault.empty()) throw table->fault.data();
        for (auto const& member : table->members) reg.registerMember(*member, member->address(&object));
    }
    /// Adds the own members to the layout of the class.
    void enter(detail::SerLayout& layout) const {
        for (auto const& member : table->members) layout.addOwn(*member);
        if (!table->fault.empty()) layout.refuse();
    }

private:
    using Member = detail::SerMember;

    template <class M, class Wrapper, class Get>
    struct Field final : Member {
        Field(std::string memberId, char const* memberName, Get g) : Member(std::move(memberId), memberName), get(g) {}
        void* address(void* object) const override { return &std::invoke(get, *static_cast<C*>(object)); }
        bool write(void* target, detail::AnyWriter s) const override { return writeTo(s, target); }
        bool write(void* target, detail::BinaryWriter s) const override { return writeTo(s, target); }
        bool read(void* target, detail::AnyReader d) const override { return readFrom(d, target); }
        bool read(void* target, detail::BinaryReader d) const override { return readFrom(d, target); }

    private:
        template <class Writer>
        bool writeTo(Writer s, void* target) const {
            M& member = *static_cast<M*>(target);
            if constexpr (detail::kWalks<Wrapper>)
                return Wrapper::writeTo(s, member, this->name);
            else
                return Wrapper(member, this->name).write(s.base());
        }
        template <class Reader>
        bool readFrom(Reader d, void* target) const {
            M& member = *static_cast<M*>(target);
            if constexpr (detail::kWalks<Wrapper>)
                return Wrapper::readFrom(d, member);
            else
                return Wrapper(member, this->name).read(d.base());
        }

        Get get;
    };

    template <class M>
    struct Variable final : Member {
        Variable(std::string memberId, char const* memberName, M& v)
            : Member(std::move(memberId), memberName), variable(v) {}
        void* address(void*) const override { return &variable; }
        bool write(void*, detail::AnyWriter s) const override { return Walk::writeTo(s, variable, this->name); }
        bool write(void*, detail::BinaryWriter s) const override { return Walk::writeTo(s, variable, this->name); }
        bool read(void*, detail::AnyReader d) const override { return Walk::readFrom(d, variable); }
        bool read(void*, detail::BinaryReader d) const override { return Walk::readFrom(d, variable); }

    private:
        using Walk = Serialisable<M>;
        M& variable;
    };

    struct Table {
        std::string className;
        int version;
        std::string typeText;
        Ask askType;
        Ask askDoc;
        std::vector<std::unique_ptr<Member>> members;
        std::string fault;  // what is wrong with the table; thrown itself, so it is mutable and stays
    };

    std::string idOf(unsigned int number) const { return generateIDStr(table->className, number); }

    void add(std::unique_ptr<Member> member) {
        for (auto const& present : table->members)
            if (present->id.text == member->id.text)
                table->fault = "SerFormat - two members have the id " + member->id.text + "\n";
        table->members.push_back(std::move(member));
    }

    Table* table;
};

namespace detail {

/// Whether a class has the operations of the macros itself and does not inherit them.
template <class C, class = void>
inline constexpr bool kHasLayout = false;
template <class C>
inline constexpr bool kHasLayout<C, std::void_t<typename C::SerSelf>> = std::is_same_v<typename C::SerSelf, C>;

template <class Base>
void addBase(SerLayout& layout, SerLayout::Convert convert) {
    if (SerLayout const* const base = Base::getSerLayout())
        layout.addBase(*base, convert);
    else
        layout.refuse();
}

/// The layout of a class with those persistent bases, made once; null if one of them has none.
template <class... Bases, class Format, class... Converts>
SerLayout const* newLayout([[maybe_unused]] Format const& format, [[maybe_unused]] Converts... converts) {
    if constexpr ((kHasLayout<Bases> && ...)) {
        auto* const layout = new SerLayout;
        (addBase<Bases>(*layout, converts), ...);
        format.enter(*layout);
        return layout;
    } else {
        return nullptr;
    }
}

/// Fills a register once: by the layout, unless it is null or does not suit the object, or else by `fill`. A string
/// thrown by a registration goes to the standard error stream and leaves the flag false.
VRL_API void registerOnce(SerrDoneFlag& done, SerRegister& reg, SerLayout const* layout, void (*fill)(void*),
                          void* object);

}  // namespace detail
}  // namespace Vorlane_v1_0

/// What VRL_PERSISTENT_ROOT and VRL_PERSISTENT have in common.
#define VRL_PERSISTENT_OPERATIONS_(Class, Virtual, Override)                                                           \
protected:                                                                                                             \
    /** The type that is saved with an object, by which a reader knows it again. */                                    \
    Virtual std::string getSerTypeName() Override;                                                                     \
    /** The version that is saved with an object. A reader accepts no other. */                                        \
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
    /** The id of an own member by its name in listings. Throws (`char*`) if the class has none of that name. */       \
    static std::string getSerId(std::string const& memberName);                                                        \
    /** The class that these operations belong to. */                                                                  \
    using SerSelf = Class;                                                                                             \
    /** The members of the persistent bases and the own ones; null if a base registers its members by hand. */         \
    static ::Vorlane_v1_0::detail::SerLayout const* getSerLayout();                                                    \
                                                                                                                       \
private:                                                                                                               \
    template <class>                                                                                                   \
    friend class ::Vorlane_v1_0::Serialisable;                                                                         \
    static ::Vorlane_v1_0::SerFormat<Class> const& serFormat();                                                        \
    template <class... Bases>                                                                                          \
    void registerBases([[maybe_unused]] ::Vorlane_v1_0::SerRegister& reg) {                                            \
        (this->Bases::doRegisterSerialisables(reg), ...);                                                              \
    }                                                                                                                  \
    template <class Base>                                                                                              \
    static void* toSerBase(void* object) {                                                                             \
        return static_cast<Base*>(static_cast<SerSelf*>(object));                                                      \
    }                                                                                                                  \
    template <class... Bases>                                                                                          \
    static ::Vorlane_v1_0::detail::SerLayout const* newSerLayout() {                                                   \
        return ::Vorlane_v1_0::detail::newLayout<Bases...>(serFormat(), &toSerBase<Bases>...);                         \
    }

/// Declares the persistence operations of a class whose bases have none; the four virtual ones come first.
#define VRL_PERSISTENT_ROOT(...) VRL_PERSISTENT_OPERATIONS_(VRL_UNPAREN_((__VA_ARGS__)), virtual, )

/// Declares the persistence operations of a class that has a persistent base.
#define VRL_PERSISTENT(...) VRL_PERSISTENT_OPERATIONS_(VRL_UNPAREN_((__VA_ARGS__)), , override)

/// Defines the operations of a class; after the class come the persistent bases, in the order of registration.
#define VRL_DEFINE_PERSISTENCE(Class, ...) VRL_DEFINE_PERSISTENCE_OF(, (Class), (__VA_ARGS__))
/// Defines the operations of a class without persistent bases.
#define VRL_DEFINE_PERSISTENCE_ROOT(Class) VRL_DEFINE_PERSISTENCE_OF(, (Class), ())

/// The same for a class template: its template head, then its name and its bases in parentheses.
#define VRL_DEFINE_PERSISTENCE_OF(Template, Class, Bases)                                                              \
    Template std::string VRL_UNPAREN_(Class)::getSerTypeName() { return serFormat().getTypeName(*this); }              \
    Template int VRL_UNPAREN_(Class)::getSerVerNo() { return serFormat().getVersion(); }                               \
    Template std::string VRL_UNPAREN_(Class)::getSerDoc() { return serFormat().getDoc(*this); }                        \
    Template ::Vorlane_v1_0::SerRegister* VRL_UNPAREN_(Class)::getSerRegister() {                                      \
        registerSerialisables();                                                                                       \
        return serDone ? &serRegister : nullptr;                                                                       \
    }                                                                                                                  \
    Template std::string VRL_UNPAREN_(Class)::getSerClassName() { return serFormat().getClassName(); }                 \
    Template std::string VRL_UNPAREN_(Class)::getSerId(std::string const& memberName) {                                \
        return serFormat().getId(memberName);                                                                          \
    }                                                                                                                  \
    Template void VRL_UNPAREN_(Class)::registerMySerialisables(::Vorlane_v1_0::SerRegister& reg) {                     \
        serFormat().enter(reg, *this);                                                                                 \
    }                                                                                                                  \
    Template void VRL_UNPAREN_(Class)::doRegisterSerialisables(::Vorlane_v1_0::SerRegister& reg) {                     \
        this->template registerBases<VRL_UNPAREN_(Bases)>(reg);                                                        \
        registerMySerialisables(reg);                                                                                  \
    }                                                                                                                  \
    Template ::Vorlane_v1_0::detail::SerLayout const* VRL_UNPAREN_(Class)::getSerLayout() {                            \
        static auto const* const layout = newSerLayout<VRL_UNPAREN_(Bases)>();                                         \
        return layout;                                                                                                 \
    }                                                                                                                  \
    Template void VRL_UNPAREN_(Class)::registerSerialisables() {                                                       \
        if (serDone) return;                                                                                           \
        auto const fill = [](void* whole) {                                                                            \
            auto* const self_ = static_cast<VRL_UNPAREN_(Class)*>(whole);                                              \
            self_->doRegisterSerialisables(self_->serRegister);                                                        \
        };                                                                                                             \
        ::Vorlane_v1_0::detail::registerOnce(serDone, serRegister, getSerLayout(), fill, this);                        \
    }                                                                                                                  \
    Template bool VRL_UNPAREN_(Class)::write(::Vorlane_v1_0::SerialiserBase* s) {                                      \
        return ::Vorlane_v1_0::Serialisable<VRL_UNPAREN_(Class)>(*this, "").write(s);                                  \
    }                                                                                                                  \
    Template bool VRL_UNPAREN_(Class)::read(::Vorlane_v1_0::DeSerialiserBase* d) {                                     \
        return ::Vorlane_v1_0::Serialisable<VRL_UNPAREN_(Class)>(*this, "").read(d);                                   \
    }

/// What is in parentheses, without them, which protect its commas.
#define VRL_UNPAREN_(X) VRL_UNPAREN_INNER_ X
/// Drops the parentheses for VRL_UNPAREN_.
#define VRL_UNPAREN_INNER_(...) __VA_ARGS__
