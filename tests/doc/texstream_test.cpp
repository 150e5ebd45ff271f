#include "vrllib/doc/texstream.h"

#include <climits>
#include <filesystem>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "tests/doc/tex_file.h"

namespace {

std::string const kPreamble = R"tex(\documentclass[10pt,a4paper,leqno]{book}
\parindent 0.25cm
\parskip 0.2cm
\topmargin 0.2cm
\oddsidemargin 0.5cm
\evensidemargin 0.5cm
\textwidth 16cm
\textheight 24cm
% Just some includes too

\usepackage{amsmath,amssymb,amsfonts} % Typical maths resource packages
\usepackage{graphicx}                 % Packages to allow inclusion of graphics
\usepackage{hyperref}                 % For creating hyperlinks in cross references
\usepackage{longtable}
\usepackage{colortbl}                 % For using colors in tables
\usepackage{lastpage}
\usepackage{float}
\usepackage{wrapfig}
\usepackage{eurosym}

% Default layout
\parindent      0.25cm
\parskip        0.2cm
\topmargin      0.2cm
\oddsidemargin  0.5cm
\evensidemargin 0.5cm
\textwidth      16cm
\textheight     24cm
\hypersetup{
  pdftoolbar=true,
  pdfmenubar=true,
  pdffitwindow=true,
  pdffitwindow=true,
  pdfauthor={Kestrom Software},
  bookmarks=true,bookmarksopen=true,
  colorlinks=true,
  urlcolor=blue,
  pdfstartview={FitH},pdfpagemode={UseThumbs},pdfpagelayout={TwoColumnLeft}
  }
% Include big png over full width (file)
\newcommand{\vrlpictbig}[1]{
\includegraphics[width=\hsize]{#1}
}
% Include big png over 3/4 width (file)
\newcommand{\vrlpictmid}[1]{
\includegraphics[width=0.75\hsize]{#1}
}
% Include big png over 1/2 width (file)
\newcommand{\vrlpictsml}[1]{
\includegraphics[width=0.5\hsize]{#1}
}

\newfloat{pngfloat}{ht}{lof}
\newcounter{ksfigure}
% Big float pict (anchor,title,pict}
\newcommand{\vrlfloatpictbig}[3]{
\refstepcounter{ksfigure}
\begin{pngfloat} \fbox{\vbox{
  \hbox to \hsize{\hfil \includegraphics[width=\hsize]{#3} \label{fig:#1} \hfil} \break
  \vskip 2pt
  \hbox to \hsize{\vbox{Figure \theksfigure : #2}}
  }}
\end{pngfloat}
}

% Big float pict (anchor,title,pict}
\newcommand{\vrlfloatpictmid}[3]{
\refstepcounter{ksfigure}
\begin{pngfloat} \fbox{\vbox{
  \hbox to \hsize{\hfil \includegraphics[width=0.75\hsize]{#3} \label{fig:#1} \hfil} \break
  \vskip 2pt
  \hbox to \hsize{\vbox{Figure \theksfigure : #2}}
  }}
\end{pngfloat}
}

% Big float pict (anchor,title,pict}
\newcommand{\vrlfloatpictsml}[3]{
\refstepcounter{ksfigure}
\begin{pngfloat} \fbox{\vbox{
  \hbox to \hsize{\hfil \includegraphics[width=0.5\hsize]{#3} \label{fig:#1} \hfil} \break
  \vskip 2pt
  \hbox to \hsize{\vbox{Figure \theksfigure : #2}}
  }}
\end{pngfloat}
}
%link to picture, (anchor)
\def\linkfig#1{figure \ref{fig:#1}}
\begin{document}
\pagenumbering{arabic}

\def\cp{\emph{cp}}
\def\textmu{$\mu$}

)tex";

std::string heading(int level) {
    return texWrittenBy([=](texstream& tex) { tex.docHeader("T", level); });
}

TEST(Texstream, WritesThePreambleOf2484BytesWhenAskedFor) {
    TexFile const file;
    texstream tex(file.path().c_str(), true);
    tex.close(false);

    EXPECT_EQ(std::filesystem::file_size(file.path()), 2484U);
    EXPECT_EQ(file.text(), kPreamble);
}

TEST(Texstream, HeaderAndFooterReturnTheStreamAndCanBeCalledByHand) {
    std::string const text = texWrittenBy([](texstream& tex) {
        EXPECT_EQ(&tex.header(), &tex);
        EXPECT_EQ(&tex.footer(), &tex);
    });

    EXPECT_EQ(text, kPreamble + "\\end{document}\n");
}

TEST(Texstream, WithoutPreambleHoldsOnlyWhatTheCallerWritesAndTheFooterOfClose) {
    TexFile const file;
    texstream tex(file.path().c_str(), false);
    tex.os() << "only this";
    tex.close(true);

    EXPECT_EQ(file.text(), "only this\\end{document}\n");
}

TEST(Texstream, ClosesWithoutFooterWhenNoneIsAskedFor) {
    TexFile const file;
    texstream tex(file.path().c_str(), false);
    tex.os() << "body";
    tex.close(false);

    EXPECT_EQ(file.text(), "body");
}

TEST(Texstream, SecondCloseWritesNoSecondFooter) {
    TexFile const file;
    texstream tex(file.path().c_str(), false);
    tex.close(true);
    tex.close(true);

    EXPECT_EQ(file.text(), "\\end{document}\n");
    EXPECT_TRUE(tex.os().good());
}

TEST(Texstream, CloseWithoutFooterIsFinal) {
    TexFile const file;
    texstream tex(file.path().c_str(), false);
    tex.close(false);
    tex.close(true);

    EXPECT_EQ(file.text(), "");
    EXPECT_TRUE(tex.os().good());
}

TEST(Texstream, PdfClosesWithTheFooter) {
    TexFile const file;
    texstream tex(file.path().c_str(), false);
    tex.pdf();
    tex.pdf();

    EXPECT_EQ(file.text(), "\\end{document}\n");
}

TEST(Texstream, RtfClosesWithTheFooter) {
    TexFile const file;
    texstream tex(file.path().c_str(), false);
    tex.rtf();
    tex.close(true);

    EXPECT_EQ(file.text(), "\\end{document}\n");
}

TEST(Texstream, DestructorClosesTheFileAndWritesNoFooter) {
    TexFile const file;
    {
        texstream tex(file.path().c_str(), false);
        tex.os() << "body";
    }

    EXPECT_EQ(file.text(), "body");
}

TEST(Texstream, EmptiesAFileThatWasThere) {
    TexFile const file;
    { std::ofstream(file.path()) << "a text that is longer than the new one"; }
    texstream tex(file.path().c_str(), false);
    tex.os() << "new";
    tex.close(false);

    EXPECT_EQ(file.text(), "new");
}

TEST(Texstream, ConvertsToTheStreamThatOsReturns) {
    TexFile const file;
    texstream tex(file.path().c_str(), false);
    std::ostream& os = tex;
    os << "by conversion";
    tex.close(false);

    EXPECT_EQ(&os, &tex.os());
    EXPECT_EQ(file.text(), "by conversion");
}

TEST(Texstream, WritingAfterCloseIsLostAndFailsTheStream) {
    TexFile const file;
    texstream tex(file.path().c_str(), false);
    tex.close(true);
    EXPECT_TRUE(tex.os().good());
    tex.os() << "late";

    EXPECT_FALSE(tex.os().good());
    EXPECT_EQ(file.text(), "\\end{document}\n");
}

TEST(Texstream, FolderThatDoesNotExistLeavesAFailedStreamAndNoFile) {
    TexFile const file;
    std::string const path = file.path() + ".none/document.tex";
    texstream tex(path.c_str(), true);
    EXPECT_TRUE(tex.os().fail());
    tex.os() << "lost";
    tex.close(true);

    EXPECT_TRUE(tex.os().fail());
    EXPECT_FALSE(std::filesystem::exists(path));
    EXPECT_FALSE(std::filesystem::exists(file.path() + ".none"));
}

TEST(Texstream, CountsAsOpenUntilCloseAlsoIfTheFileCouldNotBeOpened) {
    texstream tex("", false);
    tex.os().clear();
    tex.close(false);  // the close itself fails, since there is no file
    EXPECT_TRUE(tex.os().fail());

    tex.os().clear();
    tex.close(false);  // the second one does nothing
    EXPECT_TRUE(tex.os().good());
}

TEST(Texstream, NullFileNameCountsAsAnEmptyOneAndCannotBeOpened) {
    texstream tex(nullptr, true);
    tex.label("fig:", "a").close(true);

    EXPECT_EQ(tex.os().rdstate(), std::ios_base::failbit);
}

TEST(Texstream, OperationsOnAFailedStreamDoNothing) {
    texstream tex("", true);
    texstream& chained = tex.header().footer().docHdrInc().docHeader("T", 0).label("p", "n").ref("p", "n").docHdrDec();
    EXPECT_EQ(&chained, &tex);
    EXPECT_EQ(tex.os().rdstate(), std::ios_base::failbit);  // a write that was tried would have made it bad
    tex.pdf();
    tex.rtf();

    EXPECT_EQ(tex.os().rdstate(), std::ios_base::failbit);
}

TEST(Texstream, SectionCommandFollowsTheLevel) {
    EXPECT_EQ(heading(0), "\n\n\\chapter{T}\n\n");
    EXPECT_EQ(heading(1), "\n\n\\section{T}\n\n");
    EXPECT_EQ(heading(2), "\n\n\\subsection{T}\n\n");
    EXPECT_EQ(heading(3), "\n\n\\subsubsection{T}\n\n");
    EXPECT_EQ(heading(4), "\n\n\\paragraph{T}\n\n");
    EXPECT_EQ(heading(5), "\n\n\\subparagraph{T}\n\n");
    EXPECT_EQ(heading(6), "\n\n\\textbf{T}\n\n");
}

TEST(Texstream, AnyOtherLevelIsEmphasised) {
    EXPECT_EQ(heading(7), "\n\n\\emph{T}\n\n");
    EXPECT_EQ(heading(-1), "\n\n\\emph{T}\n\n");
    EXPECT_EQ(heading(INT_MAX), "\n\n\\emph{T}\n\n");
    EXPECT_EQ(heading(INT_MIN), "\n\n\\emph{T}\n\n");
}

TEST(Texstream, LevelsCountFromTheSectioningBase) {
    std::string const text = texWrittenBy([](texstream& tex) {
        EXPECT_EQ(&tex.docHeader("a", 0), &tex);
        EXPECT_EQ(&tex.docHdrInc(), &tex);
        tex.docHeader("b", 0).docHeader("c", 6).docHeader("d", -1);
        EXPECT_EQ(&tex.docHdrDec(), &tex);
        tex.docHeader("e", 0).docHdrDec().docHeader("f", 0).docHeader("g", 1);
    });

    EXPECT_EQ(text, "\n\n\\chapter{a}\n\n"
                    "\n\n\\section{b}\n\n"
                    "\n\n\\emph{c}\n\n"
                    "\n\n\\chapter{d}\n\n"
                    "\n\n\\chapter{e}\n\n"
                    "\n\n\\emph{f}\n\n"
                    "\n\n\\chapter{g}\n\n");
}

TEST(Texstream, SumOfBaseAndLevelBeyondAnIntIsEmphasised) {
    std::string const text = texWrittenBy([](texstream& tex) {
        tex.docHdrInc().docHeader("up", INT_MAX);
        tex.docHdrDec().docHdrDec().docHeader("down", INT_MIN);
    });

    EXPECT_EQ(text, "\n\n\\emph{up}\n\n\n\n\\emph{down}\n\n");
}

TEST(Texstream, HeadingsGoThroughId2tex) {
    EXPECT_EQ(texWrittenBy([](texstream& tex) { tex.docHeader("a_b$c", 1); }), "\n\n\\section{a\\_b\\$c}\n\n");
}

TEST(Texstream, LabelDropsTheSpecialsOfTheNameAndEndsInOneBlank) {
    EXPECT_EQ(texWrittenBy([](texstream& tex) { EXPECT_EQ(&tex.label("fig:", "a_b"), &tex); }), "\\label{fig:ab} ");
    EXPECT_EQ(texWrittenBy([](texstream& tex) { EXPECT_EQ(&tex.label("fig:", std::string("a$_b")), &tex); }),
              "\\label{fig:ab} ");
}

TEST(Texstream, RefDropsTheSpecialsOfTheNameAndEndsInOneBlank) {
    EXPECT_EQ(texWrittenBy([](texstream& tex) { EXPECT_EQ(&tex.ref("fig:", "a_b"), &tex); }), "\\ref{fig:ab} ");
    EXPECT_EQ(texWrittenBy([](texstream& tex) { EXPECT_EQ(&tex.ref("fig:", std::string("a$_b")), &tex); }),
              "\\ref{fig:ab} ");
}

TEST(Texstream, PrefixOfLabelAndRefPassesUnchanged) {
    EXPECT_EQ(texWrittenBy([](texstream& tex) { tex.label("a_$:", "n").ref("a_$:", std::string("n")); }),
              "\\label{a_$:n} \\ref{a_$:n} ");
}

TEST(Texstream, NullStringsOfLabelAndRefCountAsEmpty) {
    char const* const none = nullptr;
    std::string const text = texWrittenBy([=](texstream& tex) {
        tex.label(none, none).ref(none, none).label(none, std::string("n")).ref("p", none);
        EXPECT_TRUE(tex.os().good());
    });

    EXPECT_EQ(text, "\\label{} \\ref{} \\label{n} \\ref{p} ");
}

TEST(Texstream, Id2texPutsABackslashBeforeDollarAndUnderscore) {
    EXPECT_EQ(texstream::id2tex("a_b$c"), "a\\_b\\$c");
    EXPECT_EQ(texstream::id2tex("__$$"), "\\_\\_\\$\\$");
    EXPECT_EQ(texstream::id2tex(""), "");
}

TEST(Texstream, Id2refDropsDollarAndUnderscore) {
    EXPECT_EQ(texstream::id2ref("a_b$c"), "abc");
    EXPECT_EQ(texstream::id2ref("__$$"), "");
    EXPECT_EQ(texstream::id2ref(""), "");
}

TEST(Texstream, OtherSpecialsOfLatexPassUnchanged) {
    EXPECT_EQ(texstream::id2tex("\\#%&{}~^\xC3\xA9"), "\\#%&{}~^\xC3\xA9");
    EXPECT_EQ(texstream::id2ref("\\#%&{}~^\xC3\xA9"), "\\#%&{}~^\xC3\xA9");
}

TEST(Texstream, IsNotCopied) {
    EXPECT_FALSE(std::is_copy_constructible_v<texstream>);
    EXPECT_FALSE(std::is_copy_assignable_v<texstream>);
}

}  // namespace
