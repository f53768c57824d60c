// Crawl space by torchlight: block piers, a beam and joists, a puddle on the
// soil.
#version 3.7;
#declare BouncedLight = 0;
#include "snapshot.inc"
#include "materials.inc"
#include "functions.inc"

#declare Chance = seed(110);

Snapshot(<0.35, 0.66, -1.7>, <0.08, 0.30, 1.2>, 70, 4)
Torch(<0.10, 0.80, -1.7>, <-0.1, 0.12, 1.2>, rgb <3.2, 3.0, 2.6>, 2.0)
light_source { <-2.6, 0.7, 6.0> rgb <0.5, 0.55, 0.65> fade_distance 1.2 fade_power 2 }
light_source { <0, 0.5, -3> rgb <0.09, 0.09, 0.10> shadowless }

// uneven soil as a mesh; the puddle stands where it dips
#declare PuddleAt = <0.35, 0.0, 0.55>;
#macro Ground(X, Z)
  (0.10 * f_noise3d(X * 1.3, 1, Z * 1.3) + 0.05 * f_noise3d(X * 4, 2, Z * 4) + 0.014 * f_noise3d(X * 17, 3, Z * 17)
   - 0.13 * exp(-(pow((X - PuddleAt.x) / 0.85, 2) + pow((Z - PuddleAt.z) / 0.75, 2))))
#end
#declare Grid = 0.06;
mesh {
  #declare Row = -2.2;
  #while (Row < 7)
    #declare Column = -4;
    #while (Column < 4)
      #local A = <Column, Ground(Column, Row), Row>;
      #local B = <Column + Grid, Ground(Column + Grid, Row), Row>;
      #local C = <Column, Ground(Column, Row + Grid), Row + Grid>;
      #local D = <Column + Grid, Ground(Column + Grid, Row + Grid), Row + Grid>;
      triangle { A, B, C } triangle { B, C, D }
      #declare Column = Column + Grid;
    #end
    #declare Row = Row + Grid;
  #end
  texture { SoilTexture }
}
box { <-1.4, -1, -1.2>, <2.0, 0.034, 2.1>
  pigment { rgb <0.035, 0.028, 0.02> }
  normal { bumps 0.015 scale <0.3, 1, 0.1> }
  finish { diffuse 0.6 specular 0.9 roughness 0.003 reflection { 0.12, 0.9 fresnel on } conserve_energy }
  interior { ior 1.33 }
}
// stones and scraps
#for (Stone, 0, 90)
  #local X = Jitter(Chance, 2.4);
  #local Z = -1.2 + rand(Chance) * 5;
  superellipsoid { <0.7, 0.8> scale <0.02, 0.012, 0.017> * (0.4 + rand(Chance) * 1.2) rotate <Jitter(Chance, 20), rand(Chance) * 360, 0>
    translate <X, Ground(X, Z) + 0.005, Z> texture { ConcreteTexture(<0.20, 0.16, 0.12> * (0.6 + rand(Chance) * 0.6)) } }
#end

// pier of hollow blocks with a wooden shim on top
#macro Pier(Spot)
  union {
    box { <-0.30, -0.2, -0.30>, <0.30, 0.08, 0.30> texture { ConcreteTexture(<0.40, 0.38, 0.35>) } }
    #for (Course, 0, 2)
      #local Twist = Jitter(Chance, 3);
      difference {
        box { <-0.195, 0.084 + Course * 0.2, -0.097>, <0.195, 0.278 + Course * 0.2, 0.097> }
        #if (mod(Course, 2) = 0)
          box { <-0.16, 0.11 + Course * 0.2, -0.0995>, <0.16, 0.25 + Course * 0.2, -0.096> }
        #end
        rotate y * Twist
        texture { ConcreteTexture(<0.50, 0.49, 0.46> * (0.9 + rand(Chance) * 0.2)) translate <rand(Chance), Course, 0> * 5 }
      }
    #end
    box { <-0.2, 0.682, -0.11>, <0.2, 0.702, 0.11> texture { LumberTexture(OldLumber) rotate y * 90 } }
    // damp rising from the soil
    box { <-0.1965, 0.08, -0.1005>, <0.1965, 0.42, 0.1005>
      pigment { gradient y turbulence 0.15 color_map { [0 rgbt <0.03, 0.025, 0.02, 0.35>] [0.6 rgbt <0.05, 0.04, 0.03, 0.7>] [0.85 rgbt <1, 1, 1, 1>] } scale 0.45 } no_shadow }
    translate Spot
  }
#end
object { Pier(<-1.05, 0, 0.9>) }
object { Pier(<-1.05, 0, 3.2>) }
object { Pier(<1.35, 0, 2.0>) }
object { Pier(<1.35, 0, 4.4>) }
object { Pier(<-1.05, 0, 5.5>) }

// beams on the piers, joists over them, floor boards on top
#for (Beam, 0, 1)
  box { <-0.07, 0.702, -3>, <0.07, 0.90, 7> texture { LumberTexture(OldLumber * 1.25) translate Beam * 4 } translate x * (-1.05 + Beam * 2.4) }
#end
#for (Joist, 0, 22)
  box { <-5, 0.90, 0>, <5, 1.09, 0.04> texture { LumberTexture(FreshLumber * 0.8) rotate y * 90 translate Joist * 2.3 } translate z * (-2.2 + Joist * 0.41) }
#end
#for (Board, 0, 70)
  box { <-5 + Board * 0.14, 1.09, -3>, <-5 + Board * 0.14 + 0.137, 1.11, 7> texture { LumberTexture(OldLumber * 1.3) translate Board * 2.1 } }
#end
// one batt of insulation has come down
#for (Tuft, 0, 420)
  sphere { 0, 0.012 + rand(Chance) * 0.02 scale <1.6, 0.7, 1> translate <-0.35 + Tuft * 0.001 + Jitter(Chance, 0.08), 1.02 - 0.30 * pow(Tuft / 420, 2) + Jitter(Chance, 0.04), 2.55 + Jitter(Chance, 0.13)>
    pigment { granite color_map { [0 rgb <0.60, 0.34, 0.34>] [1 rgb <0.86, 0.62, 0.60>] } scale 0.03 } normal { granite 1 scale 0.02 } }
#end

// drain pipe on hangers
cylinder { <-3, 0.66, 4.0>, <4, 0.76, 4.0>, 0.055 pigment { rgb <0.72, 0.72, 0.70> } finish { specular 0.4 } }
#for (Strap, -1, 1) box { <Strap * 1.1, 0.66, 3.94>, <Strap * 1.1 + 0.02, 0.92, 4.06> texture { GalvanizedTexture } } #end

// foundation wall with two vents letting in daylight
difference {
  union {
    #for (Course, 0, 5)
      #for (Block, -11, 11)
        box { <0.004, 0.004, 0>, <0.396, 0.196, 0.2> translate <Block * 0.4 + 0.2 * mod(Course, 2), -0.1 + Course * 0.2, 6.5>
          texture { ConcreteTexture(<0.45, 0.44, 0.41>) translate <Block, Course, 0> * 3 } }
      #end
    #end
    box { <-5, -0.2, 6.507>, <5, 1.1, 6.69> texture { MortarTexture } }
  }
  box { <-2.7, 0.62, 6>, <-2.3, 0.80, 7> }
  box { <0.1, 0.62, 6>, <0.5, 0.80, 7> }
}
box { <-3.7, -0.3, -3>, <-3.6, 1.1, 6.6> texture { ConcreteTexture(<0.42, 0.41, 0.38>) } }
box { <3.6, -0.3, -3>, <3.7, 1.1, 6.6> texture { ConcreteTexture(<0.42, 0.41, 0.38>) } }
box { <-4, 0.4, 6.9>, <4, 1, 6.91> pigment { rgb <0.8, 0.9, 1> } finish { ambient 0 diffuse 0 emission 1.2 } }
#for (Bar, 0, 5)
  box { <-2.7, 0.635 + Bar * 0.03, 6.55>, <-2.3, 0.643 + Bar * 0.03, 6.57> pigment { rgb 0.1 } }
  box { <0.1, 0.635 + Bar * 0.03, 6.55>, <0.5, 0.643 + Bar * 0.03, 6.57> pigment { rgb 0.1 } }
#end
