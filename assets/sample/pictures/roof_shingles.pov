// Roof slope: a patch of shingles is gone down to felt and boards, the tabs
// around it have curled.
#version 3.7;
#declare BouncedLight = 0;
#include "snapshot.inc"
#include "materials.inc"
#include "plants.inc"

#declare Chance = seed(101);
#declare Slope = 24;          // degrees
#declare TabWidth = 0.30;
#declare Exposure = 0.145;    // visible part of each row
#declare Rows = 26;
#declare Tabs = 26;           // per row

CloudySky()
SoftSun(<-40, 60, -10>, rgb <1.35, 1.25, 1.10>)
light_source { <20, 30, -40> rgb <0.37, 0.42, 0.54> shadowless }

Snapshot(<0.5, 1.95, -1.2>, <0.1, 0.75, 1.6>, 62, -4)

// One tab lying on the slope; its upper edge is at the origin side +z.
#macro Tab(Tone)
  box { <0.003, 0, 0>, <TabWidth - 0.003, 0.007, Exposure * 1.5>
    rotate x * 2.4
    ShingleTexture(Tone, <rand(Chance), rand(Chance), rand(Chance)> * 9)
  }
#end

// A tab whose lower edge rolls upwards.
#macro CurledTab(Tone, Lift)
  bicubic_patch {
    type 1 flatness 0.001 u_steps 4 v_steps 4
    #for (Row, 0, 3)
      #local Away = Row / 3;
      #for (Column, 0, 3)
        #local Rise = Lift * pow(1 - Away, 2.2) * (0.5 + 0.5 * (Column = 3) + 0.25 * (Column = 0));
        <0.003 + (TabWidth - 0.006) * Column / 3, 0.012 + Rise, Exposure * 1.5 * Away + Rise * 0.5>
      #end
    #end
    ShingleTexture(Tone, <rand(Chance), rand(Chance), rand(Chance)> * 9)
  }
#end

// Where the covering is torn away: a ragged oval, in tab units.
#macro TornOff(Row, Column) (pow((Column - 12.2) / 2.4, 2) + pow((Row - 9.0) / 2.3, 2)) #end

#declare Covering = union {
  #for (Row, 0, Rows - 1)
    #for (Column, 0, Tabs - 1)
      #local Tone = AsphaltGranules * (0.75 + rand(Chance) * 0.55) + <0.015, 0.005, 0> * rand(Chance);
      #local Hole = TornOff(Row, Column) + Jitter(Chance, 0.35);
      #local Place = <(Column - Tabs / 2 + 0.5 * mod(Row, 2)) * TabWidth, 0, Row * Exposure>;
      #if (Hole > 1)
        #if (Hole < 2.6 & rand(Chance) > 0.25)
          object { CurledTab(Tone * 1.2, 0.05 + rand(Chance) * 0.07) translate Place }
        #else
          object { Tab(Tone) translate Place + y * Jitter(Chance, 0.001) }
        #end
      #end
    #end
  #end
};

#declare Underlay = union {
  // roof boards with open joints
  #for (Board, 0, 25)
    box { <-5, -0.03, Board * 0.14>, <5, -0.008, Board * 0.14 + 0.134>
      texture { LumberTexture(OldLumber * 1.5) rotate y * 90 translate Board * 3.1 } }
  #end
  // what is left of the felt
  #for (Scrap, 0, 6)
    prism { linear_spline -0.0075, -0.004, 8
      #local Reach = 0.28 + rand(Chance) * 0.2;
      #for (Corner, 0, 6)
        <cos(Corner * pi / 3.5) * Reach * (0.7 + 0.5 * rand(Chance)), sin(Corner * pi / 3.5) * Reach * 0.6>
      #end
      <Reach, 0>
      translate <-0.75 + Scrap * 0.22, 0, 1.15 + mod(Scrap * 5, 7) * 0.085>
      pigment { granite color_map { [0 rgb 0.015] [1 rgb 0.06] } scale 0.1 }
      normal { wrinkles 0.5 scale 0.1 }
    }
  #end
  // nails left behind
  #for (Nail, 0, 16)
    cylinder { 0, y * 0.006, 0.008 pigment { rgb <0.45, 0.42, 0.40> } finish { specular 0.5 }
      translate <-0.8 + rand(Chance) * 1.3, -0.006, 1.0 + rand(Chance) * 0.6> }
  #end
};

#declare VentPipe = union {
  cylinder { 0, y * 0.55, 0.055 }
  torus { 0.055, 0.008 translate y * 0.55 }
  pigment { rgb <0.45, 0.45, 0.44> } finish { specular 0.3 }
};

#declare Roof = union {
  object { Covering }
  object { Underlay }
  // ridge caps
  #for (Cap, 0, 34)
    box { <0, 0, -0.14>, <0.30, 0.012, 0.02> rotate z * 2 translate <-4 + Cap * 0.235, 0.012, Rows * Exposure + 0.06>
      ShingleTexture(AsphaltGranules * (0.8 + rand(Chance) * 0.4), Cap) }
  #end
  // lead sheet round the vent
  box { <-0.22, 0.008, -0.25>, <0.22, 0.016, 0.22> translate <1.55, 0, 2.25>
    rotate x * -1 pigment { rgb <0.36, 0.37, 0.39> } normal { bumps 0.3 scale 0.1 } finish { specular 0.3 } }
  rotate x * -Slope
};
object { Roof }
object { VentPipe translate vrotate(<1.55, 0, 2.25>, x * -Slope) - y * 0.05 }

// one tab has slid down and lies loose
object { Tab(AsphaltGranules * 1.3) rotate y * 28 translate <0.55, 0.016, 0.62> rotate x * -Slope }

object { Tree(9, <0.13, 0.20, 0.05>, Chance) translate <-9, -3.5, 19> }
object { Tree(11, <0.11, 0.18, 0.05>, Chance) translate <4, -4, 24> }
object { Tree(8, <0.15, 0.21, 0.06>, Chance) translate <13, -3.5, 20> }
