// Concrete driveway in front of a garage. The slab has broken along one long
// crack and its two parts have drifted.
#version 3.7;
#declare BouncedLight = 0;
#include "snapshot.inc"
#include "materials.inc"
#include "plants.inc"

#declare Chance = seed(103);

CloudySky()
SoftSun(<-50, 60, -30>, rgb <1.35, 1.27, 1.12>)
light_source { <30, 40, -30> rgb <0.37, 0.42, 0.54> shadowless }

Snapshot(<0.3, 1.6, -2.6>, <0.1, 0.05, 1.0>, 60, -3)

#declare SlabTone = <0.50, 0.49, 0.46>;
#declare Steps = 70;

// The crack wanders across the drive from left to right.
#declare CrackPath = array[Steps + 1];
#declare Wander = 0;
#for (I, 0, Steps)
  #declare Wander = Wander * 0.86 + Jitter(Chance, 0.09);
  #declare CrackPath[I] = <-1.9 + 3.8 * I / Steps, -0.55 + 1.5 * I / Steps + Wander>;
#end

// far side of the slab, one control joint left open behind it
prism { linear_spline -0.12, 0, Steps + 4
  #for (I, 0, Steps) CrackPath[I], #end
  <1.9, 2.0>, <-1.9, 2.0>, CrackPath[0]
  texture { ConcreteTexture(SlabTone) }
}
// near side, pulled away by a finger's width
prism { linear_spline -0.12, 0, Steps + 4
  #for (I, 0, Steps) CrackPath[I] - <0.004, 0.034 + 0.016 * sin(I * 0.21) + rand(Chance) * 0.012>, #end
  <1.9, -4>, <-1.9, -4>, CrackPath[0] - <0.004, 0.022>
  texture { ConcreteTexture(SlabTone * 0.97) translate 5 }
  translate -y * 0.004
}
// next slab up to the garage
box { <-1.9, -0.12, 2.02>, <1.9, 0, 6.4> texture { ConcreteTexture(SlabTone * 1.03) translate 11 } }
box { <-1.9, -0.2, -4>, <1.9, -0.014, 2.1> pigment { rgb <0.03, 0.025, 0.02> } }

// Hairline branches: thin dark slivers lying on the surface.
#macro Branch(Start, Heading, Length, Width)
  #local Spot = Start;
  #local Turn = Heading;
  #local Pieces = Length / 0.03;
  #for (I, 1, Pieces)
    #local Turn = Turn + Jitter(Chance, 34) + (Heading - Turn) * 0.3;
    #local Next = Spot + vrotate(<0.03, 0, 0>, y * Turn);
    cylinder { Spot, Next, Width * (1.1 - I / Pieces) scale 1 }
    #local Spot = Next;
  #end
#end
#macro OnCrack(I) (<CrackPath[I].u, 0, CrackPath[I].v>) #end
union {
  Branch(OnCrack(20), -65, 1.3, 0.005)
  Branch(OnCrack(33), -110, 1.6, 0.006)
  Branch(OnCrack(47), -50, 1.0, 0.005)
  Branch(OnCrack(26) - y * 0.004 - z * 0.03, 75, 1.3, 0.006)
  Branch(OnCrack(42) - y * 0.004 - z * 0.03, 40, 1.5, 0.006)
  Branch(OnCrack(42) - y * 0.004 - z * 0.03, 110, 1.2, 0.005)
  pigment { rgb <0.035, 0.03, 0.025> }
}
// crumbs along the edge
#for (I, 0, 160)
  #local At = OnCrack(floor(rand(Chance) * Steps));
  superellipsoid { <0.6, 0.6> scale <0.008, 0.005, 0.007> * (0.4 + rand(Chance) * 1.2) rotate y * rand(Chance) * 360
    translate At + <Jitter(Chance, 0.04), 0.001, -0.05 + Jitter(Chance, 0.06)>
    pigment { rgb SlabTone * (0.5 + rand(Chance) * 0.6) } }
#end
// weeds growing out of it
#for (Weed, 0, 15)
  object { GrassTuftMesh(26, 0.06, 0.09 + rand(Chance) * 0.08, Chance)
    translate OnCrack(8 + floor(Weed * 3.8)) - <0.03, 0.015, 0.05> texture { LawnTexture } }
#end

object { Lawn(<-7, 0, -2.5>, <-1.9, 0, 6>, 0.32, 0.06, Chance) }
object { Lawn(<1.95, 0, -2.5>, <7, 0, 6>, 0.32, 0.06, Chance) }

// garage front
#declare Siding = <0.60, 0.58, 0.50>;
#for (Lap, 0, 22)
  difference {
    box { <-6, 0, 0>, <6, 0.17, 0.02> rotate x * 4 translate <0, 0.1 + Lap * 0.15, 6.4> }
    box { <-1.5, -1, 6>, <1.5, 2.2, 7> }
    PaintTexture(Siding, 0.05)
  }
#end
box { <-6, -0.2, 6.38>, <6, 0.2, 6.6> texture { ConcreteTexture(<0.4, 0.4, 0.38>) } }
union {   // overhead door of four sections with raised panels
  #for (Section, 0, 3)
    box { <-1.5, 0, 0>, <1.5, 0.54, 0.05> translate <0, Section * 0.55, 6.45> }
    #for (Panel, 0, 3)
      object { Round_Box_Union(<0.06, 0.08, -0.02>, <0.66, 0.46, 0.03>, 0.015) translate <-1.5 + Panel * 0.75, Section * 0.55, 6.45> }
    #end
  #end
  PaintTexture(<0.78, 0.78, 0.75>, 0.2)
}
difference { box { <-1.65, 0, 6.36>, <1.65, 2.35, 6.44> } box { <-1.5, -1, 6>, <1.5, 2.2, 7> } PaintTexture(<0.8, 0.8, 0.78>, 0.1) }
object { Shrub(<0.7, 0.6, 0.5>, <0.12, 0.22, 0.06>, Chance) translate <-2.7, 0.45, 5.8> }
object { Shrub(<0.8, 0.7, 0.5>, <0.10, 0.20, 0.06>, Chance) translate <2.9, 0.5, 5.8> }
