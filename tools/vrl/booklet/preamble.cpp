#include "booklet/preamble.h"

#include <ostream>

#include "booklet/circuit_picture.h"
#include "booklet/tex_text.h"

namespace vrltool::booklet {

namespace {

constexpr char kPreamble[] = R"tex(\documentclass[10pt,a4paper,oneside]{report}
\usepackage[T1]{fontenc}
\usepackage[utf8]{inputenc}
\usepackage{textcomp}
\usepackage[scaled=0.92]{helvet}
\renewcommand{\familydefault}{\sfdefault}
\usepackage[a4paper,margin=24mm,headheight=14pt]{geometry}
\usepackage{array,booktabs,longtable}
\usepackage{fancyhdr}
\usepackage{tikz}
\usetikzlibrary{svg.path}
\usepackage{hyperref}

% The same text makes the same file.
\ifdefined\pdfinfoomitdate \pdfinfoomitdate=1 \fi
\ifdefined\pdftrailerid \pdftrailerid{} \fi
\ifdefined\pdfsuppressptexinfo \pdfsuppressptexinfo=-1 \fi

\definecolor{vrlink}{RGB}{20,60,110}
\definecolor{vrlpale}{RGB}{236,241,247}
\hypersetup{colorlinks=true,linkcolor=vrlink,bookmarksopen=true,bookmarksnumbered=true,pdfstartview={FitH}}

% Chances to break a name at its parts, and a long word anywhere; a character or a byte that has no letter.
\DeclareRobustCommand{\vrlpart}{\penalty1000\relax}
\DeclareRobustCommand{\vrlbreak}{\penalty5000\relax}
\DeclareRobustCommand{\vrlchar}[1]{{\footnotesize[U+#1]}}
\DeclareRobustCommand{\vrlbyte}[1]{{\footnotesize[0x#1]}}
\pdfstringdefDisableCommands{\def\vrlpart{}\def\vrlbreak{}\def\vrlchar#1{[U+#1]}\def\vrlbyte#1{[0x#1]}%
  \def\ensuremath#1{?}}

% Columns of a share of the width: P of prose, N of names, which are not hyphenated.
\setlength{\tabcolsep}{4pt}
\newlength{\vrlwidth}
\setlength{\vrlwidth}{\dimexpr\textwidth+2\tabcolsep\relax}
\newcolumntype{P}[1]{>{\raggedright\arraybackslash\hspace{0pt}}p{\dimexpr#1\vrlwidth-2\tabcolsep\relax}}
\newcolumntype{N}[1]{>{\raggedright\arraybackslash\hyphenpenalty=10000 \exhyphenpenalty=10000
  \hspace{0pt}}p{\dimexpr#1\vrlwidth-2\tabcolsep\relax}}
\setlength{\LTleft}{0pt}
\setlength{\LTright}{\fill}
\setlength{\LTpre}{2pt}
\setlength{\LTpost}{6pt}

\setcounter{secnumdepth}{1}
\setcounter{tocdepth}{1}
\setlength{\parindent}{0pt}
\setlength{\parskip}{4pt}
\setlength{\emergencystretch}{3em}
\raggedbottom
\newcommand{\vrlneed}[1]{\par\ifdim\pagetotal>0pt \ifdim\dimexpr\pagegoal-\pagetotal\relax<#1\relax
  \newpage\fi\fi}
\newcommand{\vrlhead}[1]{\textbf{#1}}
\makeatletter
\renewcommand{\@makechapterhead}[1]{{\raggedright\Huge\bfseries\color{vrlink}\thechapter\quad #1\par}%
  \vspace{3mm}{\color{vrlink}\hrule height 1pt}\vspace{8mm}}
\renewcommand{\@makeschapterhead}[1]{{\raggedright\Huge\bfseries\color{vrlink}#1\par}%
  \vspace{3mm}{\color{vrlink}\hrule height 1pt}\vspace{8mm}}
% A chapter goes on where the page has room for it.
\renewcommand{\chapter}{\par\vspace{12mm}\vrlneed{90mm}\global\@topnum\z@\secdef\@chapter\@schapter}
\renewcommand{\l@section}{\@dottedtocline{1}{1.5em}{3em}}
\renewcommand{\section}{\@startsection{section}{1}{0pt}{-7mm}{3mm}{\raggedright\Large\bfseries\color{vrlink}}}
\renewcommand{\subsection}{\@startsection{subsection}{2}{0pt}{-4mm}{1.5mm}{\raggedright\normalsize\bfseries}}
\makeatother

\tikzset{
  block/.style={draw=vrlink, line width=0.8pt, fill=vrlpale, rounded corners=1mm, align=center, font=\bfseries},
  composite/.style={block, double=white, double distance=1.2pt},
  port/.style={font=\footnotesize, text=black, inner sep=1mm},
  hidden/.style={draw=none},
  vrl body/.style={draw=black!73, fill=black!4, rounded corners=5bp},
  vrl sample/.style={draw=black!73, fill=black!4},
  vrl outline/.style={draw=black!58, fill=white},
  vrl tag/.style={draw=black!58, fill=white, rounded corners=5bp},
  vrl port/.style={draw=black!73, fill=white},
  vrl composite/.style={line width=2bp},
  vrl unloaded/.style={fill=white, dash pattern=on 4bp off 3bp},
  vrl frame/.style={fill=black!2},
  vrl inner/.style={fill=white},
  vrl turn/.style={draw=black!73, fill=black!7},
  vrl symbol/.style={draw=black!73, line width=1.2bp},
  vrl text/.style={inner sep=0pt, font=\fontsize{10bp}{10bp}\selectfont},
  vrl text name/.style={font=\fontsize{10bp}{10bp}\selectfont\bfseries},
  vrl text title/.style={font=\fontsize{14bp}{14bp}\selectfont\bfseries},
  vrl text pin/.style={font=\fontsize{9bp}{9bp}\selectfont},
  vrl text kind/.style={vrl text pin, text=black!67},
  vrl text foreign/.style={font=\fontsize{9bp}{9bp}\selectfont\itshape},
  vrl text cuttext/.style={font=\fontsize{10bp}{10bp}\selectfont\itshape, text=black!67},
  vrl text end/.style={}}

% A picture, made smaller if it is wider than the page.
\newsavebox{\vrlbox}
\newcommand{\vrlcentred}[1]{\par\smallskip{\centering #1\par}\smallskip}
\newenvironment{vrlpicture}{\begin{lrbox}{\vrlbox}\begin{tikzpicture}[x=1mm, y=1mm]}{\end{tikzpicture}\end{lrbox}%
  \vrlcentred{\ifdim\wd\vrlbox>\linewidth \resizebox{\linewidth}{!}{\usebox{\vrlbox}}\else
  \usebox{\vrlbox}\fi}}

% A circuit at a scale, in points that count downwards. What has no letter is a question mark there, as wide as one.
\newenvironment{vrlcircuit}[1]{\def\vrlscale{#1}\def\vrlchar##1{?}\def\vrlbyte##1{?}\begin{lrbox}{\vrlbox}%
  \begin{tikzpicture}[x=1bp, y=-1bp, line width=1bp, every node/.style={vrl text}]}{\end{tikzpicture}\end{lrbox}%
  \vrlcentred{\scalebox{\vrlscale}{\usebox{\vrlbox}}}}

% Tables that are in a box, and cannot go on over pages; a picture beside such a table.
\newcommand{\vrlboxed}{%
  \renewenvironment{longtable}[1]{\par\vskip2pt\parskip=0pt\begin{tabular}{##1}}{\bottomrule\end{tabular}\par\vskip6pt}%
  \def\endhead##1\endlastfoot{\noalign{}}}
\newcommand{\vrlbeside}[2]{\par\begin{minipage}{0.54\textwidth}#1\end{minipage}\hfill
  \begin{minipage}{0.44\textwidth}\setlength{\vrlwidth}{\dimexpr\linewidth+2\tabcolsep\relax}\vrlboxed #2\end{minipage}\par}

% A section that fits on a page is not torn: it is first set in a box, to see how high it is. Above it are 7 mm, but not
% at the top of a page.
\newsavebox{\vrlmeasure}
\newcommand{\vrlmeasured}{\vrlboxed
  \renewcommand{\section}[1]{{\raggedright\Large\bfseries ##1\par}\vskip3mm}%
  \renewcommand{\subsection}[1]{\vskip4mm{\raggedright\normalsize\bfseries ##1\par}\vskip1.5mm}%
  \renewcommand{\label}[1]{}\renewcommand{\vrlneed}[1]{}}
\newcommand{\vrlwhole}[1]{\par\setbox\vrlmeasure=\vbox{\hsize=\textwidth \vrlmeasured #1\par}%
  \ifdim\dimexpr\ht\vrlmeasure+\dp\vrlmeasure\relax<\textheight
  \vrlneed{\dimexpr\ht\vrlmeasure+\dp\vrlmeasure+7mm\relax}\begingroup\renewcommand{\vrlneed}[1]{}#1\par\endgroup
  \else #1\fi}

\pagestyle{fancy}
\fancyhf{}
\renewcommand{\headrulewidth}{0.4pt}
\fancypagestyle{plain}{\fancyhf{}\fancyfoot[R]{\thepage}\renewcommand{\headrulewidth}{0pt}}
\fancyfoot[R]{\thepage}
)tex";

void writeTitlePage(std::ostream& os, TitlePage const& page) {
    os << "\\begin{titlepage}\n\\raggedright\n\\vspace*{45mm}\n{\\color{vrlink}\\hrule height 2pt}\n\\vspace{10mm}\n"
       << "{\\fontsize{32}{38}\\selectfont\\bfseries\\color{vrlink}" << texName(page.title) << "\\par}\n\\vspace{6mm}\n"
       << "{\\Large " << texText(page.subtitle) << "\\par}\n\\vspace{10mm}\n{\\color{vrlink}\\hrule height 2pt}\n"
       << "\\vspace{10mm}\n{\\large " << page.contents << "\\par}\n\\vfill\n";
    for (std::string const& line : page.lines) os << texText(line) << "\\par\n";
    os << "\\end{titlepage}\n";
}

}  // namespace

void writePreamble(std::ostream& os, TitlePage const& page) {
    std::string const head = shortened(page.title, 40);
    os << kPreamble << '\n' << domainDefinitions();
    if (!page.chapters) os << "\\renewcommand{\\thesection}{\\arabic{section}}\n";
    os << "\\fancyhead[L]{\\small " << texText(head) << "}\n\\hypersetup{pdftitle={" << texText(head)
       << "}}\n\n\\begin{document}\n";
    writeTitlePage(os, page);
    os << (page.chapters ? "\\pagenumbering{roman}\n\\tableofcontents\n\\clearpage\n\\pagenumbering{arabic}\n"
                         : "\\tableofcontents\n\\vspace{8mm}\n");
}

}  // namespace vrltool::booklet
