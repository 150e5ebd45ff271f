#pragma once

#include "vrllib/base/export.h"

// The classes of the interface, declared with their visibility: a template instance is only as visible as the least
// visible declaration of its arguments.

class VRL_API texstream;

/// The object model of a photonic design flow. Its name holds the version of the interface; users spell it `vrl`.
namespace Vorlane_v1_0 {

class VRL_API Annotations;
class VRL_API Attribute;
class VRL_API AttributeWithExpr;
class VRL_API Attributes;
template <class T>
class VRL_TEMPLATE Value;

class VRL_API SerialisableBase;
class VRL_API SerialiserBase;
class VRL_API DeSerialiserBase;
class VRL_API SerRegister;

class VRL_API Component;
class VRL_API RegisterView;
class VRL_API View;
template <class T>
class VRL_TEMPLATE TypeView;
template <class T>
class VRL_TEMPLATE ViewT;

class VRL_API Foundry;
class VRL_API CrossSection;
class VRL_API ProcessFlow;
class VRL_API ModeModel;
class VRL_API BB;
class VRL_API Netlist;
class VRL_API CBB;

}  // namespace Vorlane_v1_0
