// Attic: trusses one behind the other, insulation so thin that the joists
// stand out of it, daylight through the gable vent.
#version 3.7;
#declare BouncedLight = 0;
#include "snapshot.inc"
#include "materials.inc"

#declare Chance = seed(109);

Snapshot(<0.12, 1.10, -1.15>, <-0.05, 0.62, 3.5>, 66, -4)
Torch(<0.30, 1.22, -1.1>, <0, 0.35, 3.0>, rgb <2.3, 2.15, 1.9>, 2.6)
light_source { <0, 1.6, 7.6> rgb <0.55, 0.62, 0.75> fade_distance 2.5 fade_power 1.5 }
light_source { <0, 1.0, -4> rgb <0.10, 0.10, 0.11> shadowless }

#declare HalfSpan = 4.2;
#declare RidgeHeight = 2.35;
#declare RoofAngle = degrees(atan2(RidgeHeight, HalfSpan));
#declare Thickness = 0.038;
#declare Depth = 0.09;
#declare Spacing = 0.61;
#declare Trusses = 13;
#declare GableZ = Trusses * Spacing;

// A plank between two points of a truss, its wide side to the viewer.
#macro Chord(From, To, Tone, Wide)
  #local Run = To - From;
  box { <0, -Wide / 2, -Thickness / 2>, <vlength(Run), Wide / 2, Thickness / 2>
    texture { LumberTexture(Tone) rotate y * 90 translate <rand(Chance), rand(Chance), rand(Chance)> * 7 }
    rotate z * degrees(atan2(Run.y, Run.x))
    translate From
  }
#end
// toothed steel plate where members meet
#macro Plate(Spot)
  box { <-0.07, -0.055, -Thickness / 2 - 0.002>, <0.07, 0.055, Thickness / 2 + 0.002> translate Spot texture { GalvanizedTexture } }
#end

#macro Truss()
  #local Tone = FreshLumber * (0.72 + rand(Chance) * 0.3);
  union {
    Chord(<-HalfSpan, 0.045, 0>, <HalfSpan, 0.045, 0>, Tone, Depth)
    Chord(<-HalfSpan, 0.06, 0>, <0, RidgeHeight, 0>, Tone, Depth * 1.2)
    Chord(<HalfSpan, 0.06, 0>, <0, RidgeHeight, 0>, Tone, Depth * 1.2)
    Chord(<-1.35, 0.06, 0>, <-2.1, RidgeHeight / 2, 0>, Tone, Depth * 0.9)
    Chord(<1.35, 0.06, 0>, <2.1, RidgeHeight / 2, 0>, Tone, Depth * 0.9)
    Chord(<-1.35, 0.06, 0>, <0, RidgeHeight - 0.05, 0>, Tone, Depth * 0.9)
    Chord(<1.35, 0.06, 0>, <0, RidgeHeight - 0.05, 0>, Tone, Depth * 0.9)
    Plate(<-1.35, 0.07, 0>) Plate(<1.35, 0.07, 0>)
    Plate(<-2.08, RidgeHeight / 2 - 0.02, 0>) Plate(<2.08, RidgeHeight / 2 - 0.02, 0>)
    Plate(<0, RidgeHeight - 0.07, 0>)
  }
#end
#for (Each, 0, Trusses)
  object { Truss() translate z * (Each * Spacing - 0.3) }
#end

// roof boards: pressed chips in panels
#declare ChipBoard = texture {
  pigment {
    crackle metric 1 turbulence 0.15
    color_map { [0.0 rgb <0.24, 0.15, 0.07>] [0.1 rgb <0.46, 0.32, 0.17>] [0.5 rgb <0.56, 0.41, 0.23>] [1.0 rgb <0.64, 0.50, 0.30>] }
    scale <0.05, 0.05, 0.12>
  }
  finish { diffuse 0.7 }
}
#for (Side, -1, 1, 2)
  #for (PanelRow, 0, 3)
    #for (PanelColumn, 0, 4)
      box { <0, 0, 0>, <1.215, 0.012, 2.435> texture { ChipBoard translate <PanelRow, 0, PanelColumn> * 3 }
        translate <-0.1 + PanelRow * 1.22, 0.055, -2 + PanelColumn * 2.44 - 1.22 * mod(PanelRow, 2)>
        rotate -z * RoofAngle translate y * RidgeHeight scale <Side, 1, 1> }
    #end
  #end
#end
// dark water stain on the boards
disc { 0, y, 0.9
  pigment { spherical turbulence 0.5 color_map { [0 rgbt <0.05, 0.03, 0.02, 1>] [0.3 rgbt <0.06, 0.04, 0.025, 0.5>] [1 rgbt <0.03, 0.02, 0.015, 0.2>] } scale 0.9 }
  translate <1.8, 0.052, 2.6> rotate -z * RoofAngle translate y * RidgeHeight }

// gable wall with a louvred vent
difference {
  box { <-5, 0, GableZ>, <5, 3, GableZ + 0.02> }
  box { <-0.32, 1.05, GableZ - 1>, <0.32, 1.75, GableZ + 1> }
  texture { ChipBoard rotate x * 90 }
}
box { <-2, 0.5, GableZ + 0.3>, <2, 2.5, GableZ + 0.31> pigment { rgb <0.85, 0.92, 1> } finish { ambient 0 diffuse 0 emission 1.3 } }
#for (Louvre, 0, 8)
  box { <-0.34, 0, -0.045>, <0.34, 0.008, 0.045> rotate x * 40 translate <0, 1.09 + Louvre * 0.08, GableZ> texture { LumberTexture(GreyLumber) rotate y * 90 } }
#end

// ceiling board under everything
box { <-5, -0.02, -3>, <5, 0, GableZ> pigment { granite color_map { [0 rgb 0.35] [1 rgb 0.6] } scale 0.1 } }

// Thin blanket between the joists: a lumpy sheet per bay, bare in places.
#include "functions.inc"
#declare Fluff = texture {
  pigment {
    granite turbulence 0.5
    color_map { [0 rgb <0.42, 0.20, 0.20>] [0.4 rgb <0.70, 0.42, 0.40>] [1 rgb <0.85, 0.62, 0.58>] }
    scale 0.12
  }
  normal { granite 0.9 scale 0.03 }
  finish { diffuse 0.85 }
}
#declare LumpStep = 0.05;
#macro LumpHeight(X, Z) (0.006 + 0.05 * f_noise3d(X * 2.1, 3, Z * 2.1) + 0.030 * f_noise3d(X * 9, 7, Z * 9) + 0.012 * f_noise3d(X * 31, 5, Z * 31) - 0.09 * max(0, min(1, (f_noise3d(X * 0.9 + 4, 9, Z * 0.9) - 0.58) * 12))) #end
mesh {
  #declare BayZ = -0.25;
  #while (BayZ < GableZ)
    #declare Left = -3.2;
    #while (Left < 3.2)
      #local A = <Left, LumpHeight(Left, BayZ), BayZ>;
      #local B = <Left + LumpStep, LumpHeight(Left + LumpStep, BayZ), BayZ>;
      #local C = <Left, LumpHeight(Left, BayZ + LumpStep), BayZ + LumpStep>;
      #local D = <Left + LumpStep, LumpHeight(Left + LumpStep, BayZ + LumpStep), BayZ + LumpStep>;
      triangle { A, B, C } triangle { B, C, D }
      #declare Left = Left + LumpStep;
    #end
    #declare BayZ = BayZ + LumpStep;
  #end
  texture { Fluff }
}

// cable stapled along and a junction box without lid
#declare Cable = array[4] { <-0.7, 0.10, -1>, <-0.65, 0.10, 2.2>, <-0.2, 0.10, 2.4>, <0.1, 0.10, 6> }
object { PipeRun(Cable, 0.007) pigment { rgb <0.75, 0.74, 0.68> } }
object { Round_Box_Union(<-0.26, 0.09, 2.36>, <-0.14, 0.15, 2.48>, 0.006) texture { GalvanizedTexture } }
// plank to walk on
box { <0.45, 0.092, -1>, <0.75, 0.115, 4.4> texture { LumberTexture(OldLumber * 1.4) translate 3 } rotate y * -3 }
