package com.korvane.ledger;
public class ReversalPosting extends Posting {
    private String [!reason:String];
    @Override public void post() {
        [>reverse]();  //@ calls Posting.reverse
        super.[>post]();  //@ calls Posting.post
    }
}
