// Eave seen from a ladder: the gutter has torn off the fascia at one end and hangs,
// its spikes and a bent hanger still showing.
#version 3.7;
#declare BouncedLight = 0;
#include "snapshot.inc"
#include "materials.inc"
#include "plants.inc"

#declare Chance = seed(102);

CloudySky()
SoftSun(<45, 60, -55>, rgb <1.3, 1.22, 1.08>)
light_source { <-15, -6, -40> rgb <0.51, 0.54, 0.61> shadowless }

Snapshot(<1.75, 3.25, -2.0>, <0.25, 2.62, 0>, 60, -4)

// wall of lapped siding, its top at the soffit
#for (Lap, 0, 24)
  box { <-5, 0, 0>, <5, 0.14, 0.02> rotate x * 5 translate <0, -0.5 + Lap * 0.125, 0.42>
    PaintTexture(<0.52, 0.58, 0.60>, 0.1) }
#end
// soffit with vent slots
difference {
  box { <-5, 2.55, 0.02>, <5, 2.57, 0.5> }
  #for (Slot, 0, 60)
    box { <-4.5 + Slot * 0.15, 2.5, 0.18>, <-4.5 + Slot * 0.15 + 0.11, 2.565, 0.195> }
  #end
  PaintTexture(<0.70, 0.70, 0.67>, 0.1)
}
// fascia, stained where the gutter used to hang
box { <-5, 2.53, 0>, <5, 2.80, 0.025>
  texture { pigment { rgb <0.75, 0.74, 0.70> } finish { specular 0.1 } }
  texture {
    pigment {
      granite turbulence 0.4
      color_map {
        [0.0 rgbt <0.10, 0.06, 0.03, 0.10>]
        [0.35 rgbt <0.18, 0.12, 0.07, 0.45>]
        [0.6 rgbt <1, 1, 1, 1>]
      }
      scale <0.25, 0.9, 0.25>
    }
  }
}
// holes the spikes left, with rust runs
#for (Hole, 0, 3)
  union {
    cylinder { <0, 0, -0.003>, <0, 0, 0.01>, 0.009 pigment { rgb 0.01 } }
    box { <-0.006, -0.12, -0.001>, <0.006, 0, 0> pigment { gradient y color_map { [0 rgbt <0.3, 0.12, 0.04, 1>] [1 rgbt <0.3, 0.12, 0.04, 0.1>] } scale 0.12 translate -y * 0.12 } }
    translate <-0.45 + Hole * 0.6, 2.72, 0>
  }
#end

// roof edge
#for (Row, 0, 20)
  #for (Column, 0, 36)
    box { <0.002, 0, 0>, <0.298, 0.009, 0.24> rotate x * -18
      translate <-5.4 + Column * 0.3 + 0.15 * mod(Row, 2), 2.805 + Row * 0.05, -0.05 + Row * 0.145>
      ShingleTexture(<0.17, 0.12, 0.10> * (0.8 + rand(Chance) * 0.5), <rand(Chance), Row, Column>) }
  #end
#end

// Cross-section of the trough: flat back, curled front lip; x is outwards.
#declare TroughLength = 3.6;
#declare Trough = union {
  prism {
    linear_spline 0, TroughLength, 15
    <0, 0>, <0, -0.12>, <0.075, -0.12>, <0.085, -0.09>, <0.12, -0.045>, <0.125, 0>, <0.11, 0>,
    <0.11, -0.006>, <0.120, -0.006>, <0.115, -0.042>, <0.080, -0.085>, <0.070, -0.115>, <0.005, -0.115>, <0.005, 0>, <0, 0>
  }
};
// Sweep direction becomes x, outwards becomes -z, and the open side looks up.
#declare Gutter = union {
  object { Trough matrix <0, 0, -1, 1, 0, 0, 0, 1, 0, 0, 0, 0> }
  texture { pigment { rgb <0.80, 0.80, 0.78> } finish { specular 0.4 roughness 0.03 reflection 0.03 } }
  texture {
    pigment { granite color_map { [0 rgbt <0.12, 0.10, 0.07, 0.35>] [0.3 rgbt <0.3, 0.28, 0.2, 0.9>] [0.5 rgbt 1] } scale <0.2, 0.5, 0.2> }
  }
};

// left run, still in place
object { Gutter translate <-0.9 - TroughLength, 2.775, -0.004> }
// loose run, hinged at its left end
union {
  object { Gutter }
  // spikes and hangers that came out with it
  #for (Spike, 0, 2)
    union {
      cylinder { <0, -0.02, -0.13>, <0, -0.02, 0.16>, 0.005 }
      cylinder { <0, -0.02, -0.135>, <0, -0.02, -0.130>, 0.011 }
      texture { RustTexture } translate x * (0.55 + Spike * 0.95)
    }
  #end
  // leaves caught in the trough
  #for (Leaf, 0, 170)
    disc { 0, y, 0.03 scale <1, 1, 0.6> rotate <Jitter(Chance, 25), rand(Chance) * 360, Jitter(Chance, 25)>
      translate <rand(Chance) * TroughLength, -0.06 + Jitter(Chance, 0.02), -0.05 + Jitter(Chance, 0.035)>
      pigment { rgb <0.26, 0.14 + Jitter(Chance, 0.05), 0.05> * (0.5 + rand(Chance)) } }
  #end
  rotate x * -14
  rotate z * -11
  rotate y * 9
  translate <-0.9, 2.765, -0.004>
}
// downspout at the sound end
#declare Spout = array[4] { <-1.25, 2.68, -0.07>, <-1.25, 2.50, -0.07>, <-1.25, 2.32, 0.33>, <-1.25, -1, 0.33> }
object { PipeRun(Spout, 0.042) texture { pigment { rgb <0.78, 0.78, 0.76> } finish { specular 0.3 } } }

// water runs down the siding
box { <0.2, -0.5, 0.36>, <1.6, 2.5, 0.361>
  pigment { bozo turbulence 0.5 color_map { [0 rgbt <0.15, 0.14, 0.10, 0.45>] [0.4 rgbt <0.2, 0.2, 0.15, 0.9>] [0.5 rgbt 1] } scale <0.12, 1.2, 0.1> } }

plane { y, -0.5 texture { LawnTexture scale 3 } }
box { <-5, -0.5, -0.9>, <5, -0.46, 0.4> texture { ConcreteTexture(<0.5, 0.48, 0.44>) } }
object { Tree(7, <0.14, 0.22, 0.06>, Chance) translate <-9, -0.5, 6> }
