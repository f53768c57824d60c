// Back deck: its edge has a guard with balusters, the stairs down to the lawn
// have no rail on either side.
#version 3.7;
#declare BouncedLight = 0;
#include "snapshot.inc"
#include "materials.inc"
#include "plants.inc"

#declare Chance = seed(112);

CloudySky()
SoftSun(<-45, 55, -50>, rgb <1.3, 1.22, 1.06>)
light_source { <30, 30, -30> rgb <0.38, 0.42, 0.52> shadowless }

Snapshot(<2.3, 1.65, -4.3>, <0.15, 0.92, 0.5>, 58, 3)

#declare DeckHeight = 1.12;
#declare StairHalf = 0.55;
#declare Steps = 6;
#declare Rise = DeckHeight / Steps;
#declare Going = 0.27;
#macro DeckLumber(Turn) texture { LumberTexture(<0.50, 0.33, 0.19>) rotate Turn translate <rand(Chance), rand(Chance), rand(Chance)> * 5 } #end

// ---- deck
#for (Board, 0, 17)
  box { <-3.4, DeckHeight - 0.03, 0.0 + Board * 0.145>, <3.0, DeckHeight, 0.138 + Board * 0.145> DeckLumber(y * 90) }
#end
box { <-3.4, DeckHeight - 0.24, 0.0>, <3.0, DeckHeight - 0.03, 0.04> DeckLumber(y * 90) }
box { <2.96, DeckHeight - 0.24, 0.0>, <3.0, DeckHeight - 0.03, 2.6> DeckLumber(0) }
#for (Leg, 0, 3)
  box { <-0.05, -0.1, -0.05>, <0.05, DeckHeight - 0.24, 0.05> translate <-3.3 + Leg * 2.08, 0, 0.12> DeckLumber(x * 90) }
#end
#for (Joist, 0, 14)
  box { <-3.3 + Joist * 0.44, DeckHeight - 0.22, 0.04>, <-3.26 + Joist * 0.44, DeckHeight - 0.03, 2.6> DeckLumber(0) }
#end

// ---- guard along the front edge, open at the stairs
#macro Guard(From, To)
  #local Balusters = floor((To - From) / 0.125);
  box { <From, DeckHeight + 0.93, -0.03>, <To, DeckHeight + 0.97, 0.11> DeckLumber(y * 90) }
  box { <From, DeckHeight + 0.84, 0.02>, <To, DeckHeight + 0.93, 0.06> DeckLumber(y * 90) }
  box { <From, DeckHeight + 0.08, 0.02>, <To, DeckHeight + 0.17, 0.06> DeckLumber(y * 90) }
  #for (Baluster, 1, Balusters - 1)
    box { <-0.018, DeckHeight + 0.10, -0.018>, <0.018, DeckHeight + 0.90, 0.018> translate <From + (To - From) * Baluster / Balusters, 0, 0.0> DeckLumber(x * 90) }
  #end
#end
#macro Post(X) box { <X - 0.045, DeckHeight - 0.2, -0.005>, <X + 0.045, DeckHeight + 1.0, 0.085> DeckLumber(x * 90) } #end
Guard(-3.4, -StairHalf - 0.05)
Guard(StairHalf + 0.05, 3.0)
Post(-3.35) Post(-1.95) Post(-StairHalf - 0.05) Post(StairHalf + 0.05) Post(1.75) Post(2.95)

// ---- stairs: two stringers, open treads, nothing to hold on to
#for (Side, -1, 1, 2)
  prism { linear_spline -0.02, 0.02, 2 * Steps + 2
    <0, DeckHeight - 0.06>
    #for (Step, 1, Steps - 1)
      , <-(Step - 1) * Going, DeckHeight - Step * Rise - 0.04>, <-Step * Going, DeckHeight - Step * Rise - 0.04>
    #end
    , <-(Steps - 1) * Going, 0>, <-(Steps - 1) * Going + 0.26, 0>, <0, DeckHeight - 0.36>
    matrix <0, 0, 1, 1, 0, 0, 0, 1, 0, Side * (StairHalf - 0.06), 0, 0>
    DeckLumber(x * 40)
  }
#end
#for (Step, 1, Steps - 1)
  #for (Plank, 0, 1)
    box { <-StairHalf, -0.038, 0>, <StairHalf, 0, 0.138>
      DeckLumber(y * 90)
      rotate z * Jitter(Chance, 0.5)
      translate <Jitter(Chance, 0.008), DeckHeight - Step * Rise, -Step * Going - 0.02 + Plank * 0.146> }
  #end
#end
// landing of two paving slabs
box { <-0.75, -0.05, -2.25>, <0.0, 0.095, -1.45> texture { ConcreteTexture(<0.52, 0.50, 0.46>) } }
box { <0.01, -0.05, -2.25>, <0.75, 0.09, -1.45> texture { ConcreteTexture(<0.50, 0.48, 0.45>) translate 4 } }

// ---- house wall with patio door
#for (Lap, 0, 30)
  difference {
    box { <-7, 0, 0>, <7, 0.15, 0.02> rotate x * 5 translate <0, 0.2 + Lap * 0.13, 2.6> }
    box { <-1.0, DeckHeight, 2>, <1.0, DeckHeight + 2.1, 4> }
    PaintTexture(<0.60, 0.62, 0.58>, 0.05)
  }
#end
box { <-7, -0.2, 2.64>, <7, 0.6, 3> texture { ConcreteTexture(<0.45, 0.44, 0.42>) } }
#for (Leaf, 0, 1)
  difference {
    box { <0, DeckHeight, 2.60>, <1.0, DeckHeight + 2.1, 2.66> }
    box { <0.09, DeckHeight + 0.12, 2>, <0.91, DeckHeight + 2.0, 3> }
    translate x * (Leaf - 1) PaintTexture(<0.8, 0.8, 0.78>, 0.2)
  }
#end
box { <-1, DeckHeight, 2.65>, <1, DeckHeight + 2.1, 2.66> pigment { rgb <0.04, 0.05, 0.06> } finish { diffuse 0.4 specular 0.8 reflection 0.3 } }
difference {
  box { <-1.1, DeckHeight, 2.58>, <1.1, DeckHeight + 2.2, 2.63> }
  box { <-1, 0, 2>, <1, DeckHeight + 2.1, 3> }
  PaintTexture(<0.8, 0.8, 0.78>, 0.1)
}
// lamp by the door, a pot and a chair on the deck
box { <1.35, DeckHeight + 1.65, 2.48>, <1.47, DeckHeight + 1.9, 2.6> texture { BlackPlasticTexture } }
union {
  cone { 0, 0.14, y * 0.3, 0.19 pigment { rgb <0.45, 0.20, 0.12> } }
  object { LeafCloud(<0.3, 0.28, 0.3>, 700, 0.08, Chance) translate y * 0.5 LeafTexture(<0.15, 0.28, 0.08>) }
  translate <-1.6, DeckHeight, 1.4>
}

object { Lawn(<-6, 0, -4.2>, <6, 0, 2.6>, 0.34, 0.06, Chance) }
object { Shrub(<0.6, 0.5, 0.5>, <0.11, 0.21, 0.06>, Chance) translate <-3.5, 0.35, -0.4> }
object { Tree(9, <0.12, 0.20, 0.05>, Chance) translate <-9, 0, 8> }
object { Tree(8, <0.12, 0.20, 0.05>, Chance) translate <10, 0, -12> }
