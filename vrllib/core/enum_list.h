#pragma once

#include <string>

#include "vrllib/base/export.h"
#include "vrllib/base/forward.h"

namespace Vorlane_v1_0 {

/// The closed vocabularies of the system and the texts of their ids.
///
/// The numbers are stored in plug-ins and in saved designs: they are never renumbered, and gaps stay gaps. Any other
/// number is a value, too, and has the texts of the undefined id. Nothing turns a string back into an id.
/// Errors: none. Threads: any, apart from the caller's own stream.
class VRL_API EnumList {
public:
    /// Who made a solver.
    enum SolverID : int {
        UndefSolver = 0,
        InHouseSolver = 1,
        GenericSolver = 2,
        KestromSolver = 1000,
        FilareteSolver = 1001,
        DaglainSolver = 1002,
        PhotonDesignSolver = 1003,
        VPIPhotonicsSolver = 1004,
        LumericalSolver = 1005,
        TUESolver = 2000,
        IMECSolver = 2001,
        LetiSolver = 2002
    };

    /// Which fabrication house, or packager, a design is made for.
    enum FoundryID : int {
        UndefFoundry = 0,
        InHouseFoundry = 1,
        VirtualFoundry = 2,
        OclaroFoundry = 1000,
        SmartPhotonixFoundry = 1001,
        HHIFoundry = 1002,
        CobraFoundry = 1003,
        IMECFoundry = 2000,
        LetiFoundry = 2001,
        AMSFoundry = 2002,
        AMOFoundry = 2003,
        IHPFoundry = 2004,
        OpSisIMEFoundry = 2005,
        LioniXFoundry = 2014,
        CIPFoundry = 2016,
        TyndallPackage = 2019
    };

    /// How far a building block has come.
    enum Maturity : int { Unspecified = 0, Research = 1, Prototype = 2, Series = 3, Volume = 4 };

    /// What a port or a block belongs to: 1 to 7 are the physical domains of ports, 8 to 12 are kinds of block.
    enum Domain : int {
        Unknown = 0,
        Signal = 1,
        Optics = 2,
        DC = 3,
        RF = 4,
        Acoustic = 5,
        Mechanic = 6,
        Fluidics = 7,
        Layout = 8,
        DieDesign = 9,
        TestBB = 10,
        PackageBB = 11,
        CBB = 12
    };

    /// The polarisation of a mode. Its text form is the head of the mode's label, see ModeLabel.
    enum Polarisation : int { UnknownPol = 0, TE = 1, TM = 2, FV = 3 };

    /// An object holds nothing: the texts are asked of the class.
    EnumList() = default;
    /**@{*/
    /// There is nothing to copy.
    EnumList(EnumList const&) = default;
    EnumList& operator=(EnumList const&) = default;
    /**@}*/
    virtual ~EnumList();

    /// "UndefSolver" for a number that is none of the ids.
    static std::string getName(SolverID const& id);

    /// "UndefFoundry" for a number that is none of the ids, and also for HHIFoundry, OpSisIMEFoundry, LioniXFoundry and
    /// CIPFoundry, which have LaTeX text only.
    static std::string getName(FoundryID const& id);

    /// "Unspecified" for a number that is none of the values.
    static std::string getName(Maturity const& maturity);

    /// "Unknown" for a number that is none of the values.
    static std::string getName(Domain const& domain);

    /// Writes the LaTeX text, unescaped and without a line end; nothing for an unknown id. Returns the same texstream.
    ///
    /// The text of IMECSolver leaves a brace open, by design.
    static texstream& toTex(texstream& tex, SolverID const& id);

    /// As above. The texts of IHPFoundry and TyndallPackage begin with a TAB where the others have "\t", by
    /// design; SmartPhotonixFoundry has a name of its own here.
    static texstream& toTex(texstream& tex, FoundryID const& id);
};

}  // namespace Vorlane_v1_0
